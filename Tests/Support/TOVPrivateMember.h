// Reaches a private data member of a class, for the states that no caller can bring about: an exhausted counter, say,
// or a count below 0.
//
//     TOV_PRIVATE_MEMBER(NextClassId, CTOVClassServer, unsigned long, m_dwNextClassId)
//     ...
//     NextClassId(oServer) = 7;
//
// The macro stands in a namespace. It uses the rule that an explicit instantiation may name private members.
#pragma once

#define TOV_PRIVATE_MEMBER(fnReach, TOwner, TMember, mMember)                                                          \
    struct s##fnReach                                                                                                  \
    {                                                                                                                  \
        typedef TMember TOwner::*tPointer;                                                                             \
        friend tPointer ReachMember(s##fnReach);                                                                       \
    };                                                                                                                 \
    template<s##fnReach::tPointer pMember> struct s##fnReach##Opener                                                   \
    {                                                                                                                  \
        friend s##fnReach::tPointer ReachMember(s##fnReach) { return pMember; }                                        \
    };                                                                                                                 \
    template struct s##fnReach##Opener<&TOwner::mMember>;                                                              \
    inline TMember& fnReach(TOwner& oOwner)                                                                            \
    {                                                                                                                  \
        return oOwner.*ReachMember(s##fnReach());                                                                      \
    }
