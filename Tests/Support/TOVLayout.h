// The layout of classes with virtual operations: a pointer to the table of these, and then the members.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <vector>

// Lays out members of these types in this order: the place of each, and at last the size of the class.
template<class... TMembers> std::vector<std::size_t> PlacesOfMembers()
{
    const auto Align = [](std::size_t nPlace, std::size_t nTo) { return (nPlace + nTo - 1) / nTo * nTo; };
    std::vector<std::size_t> aPlaces;
    std::size_t nEnd = sizeof(void*);
    const auto Add = [&](std::size_t nSize, std::size_t nAlignment) {
        aPlaces.push_back(Align(nEnd, nAlignment));
        nEnd = aPlaces.back() + nSize;
    };
    (Add(sizeof(TMembers), alignof(TMembers)), ...);
    aPlaces.push_back(Align(nEnd, std::max({alignof(void*), alignof(TMembers)...})));
    return aPlaces;
}

// The size of a class that holds members of these types, in this order, and no others.
template<class... TMembers> std::size_t SizeWithMembers()
{
    return PlacesOfMembers<TMembers...>().back();
}

// These are the members of the object, in this order, and it has no others.
template<class TOwner, class... TMembers> void ExpectMembersInOrder(const TOwner& oOwner, const TMembers&... oMembers)
{
    const auto pOwner = reinterpret_cast<const char*>(&oOwner);
    const std::vector<std::size_t> aPlaces = {
        static_cast<std::size_t>(reinterpret_cast<const char*>(&oMembers) - pOwner)..., sizeof(TOwner)};

    EXPECT_EQ(PlacesOfMembers<TMembers...>(), aPlaces);
}
