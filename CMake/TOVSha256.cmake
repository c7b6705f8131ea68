# SHA-256 for tovcatalog, from libgcrypt. The static library is linked, so that a package of the program needs nothing
# more. Without it the program has CRC-32 only, and says so when it is asked for more.

find_path(TOV_GCRYPT_INCLUDE gcrypt.h DOC "The folder with gcrypt.h")
find_library(TOV_GCRYPT libgcrypt.a DOC "The static library of libgcrypt")
find_library(TOV_GPG_ERROR libgpg-error.a DOC "The static library of libgpg-error, which libgcrypt needs")

# tov_use_sha256(<target> <source> <other source>): adds the first source, which uses libgcrypt, or the second one, which
# stands in for it.
function(tov_use_sha256 target source other_source)
    if(TOV_GCRYPT_INCLUDE AND TOV_GCRYPT AND TOV_GPG_ERROR)
        target_sources(${target} PRIVATE ${source})
        target_include_directories(${target} SYSTEM PRIVATE "${TOV_GCRYPT_INCLUDE}")
        target_link_libraries(${target} PUBLIC "${TOV_GCRYPT}" "${TOV_GPG_ERROR}")
        if(WIN32)
            target_link_libraries(${target} PUBLIC ws2_32)
        endif()
        return()
    endif()
    target_sources(${target} PRIVATE ${other_source})
    if(WIN32)
        set(package libgcrypt-mingw-w64-dev)
    else()
        set(package libgcrypt20-dev)
    endif()
    message(WARNING "tovcatalog is built without SHA-256: the package ${package} is missing")
endfunction()
