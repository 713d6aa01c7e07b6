# Compiler switches shared by every target: warnings, sanitizers, the compiler cache.

set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_CURRENT_LIST_DIR}/compile)

add_compile_definitions(
    QT_NO_KEYWORDS
    QT_NO_CAST_FROM_ASCII
    QT_NO_CAST_TO_ASCII
    QT_NO_URL_CAST_FROM_STRING
    QT_NO_FOREACH
    QT_DISABLE_DEPRECATED_BEFORE=0x060400)

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -fpch-preprocess)
# A newer compiler, which comes with a newer Qt too, may warn of more than anybody has seen here.
if(WENDLORE_WERROR AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    add_compile_options(-Werror)
endif()

if(WENDLORE_SANITIZE)
    # What the sanitizers put in between makes GCC see uninitialised values where there are none.
    add_compile_options(-fsanitize=address,undefined -fno-omit-frame-pointer -Wno-maybe-uninitialized)
    add_link_options(-fsanitize=address,undefined)
endif()
