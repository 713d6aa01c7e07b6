# Compiler switches shared by every target: warnings, sanitizers, the compiler cache.

find_program(WENDLORE_CCACHE ccache)
if(WENDLORE_CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER
        ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
        ${WENDLORE_CCACHE})
endif()

add_compile_definitions(
    QT_NO_KEYWORDS
    QT_NO_CAST_FROM_ASCII
    QT_NO_CAST_TO_ASCII
    QT_NO_URL_CAST_FROM_STRING
    QT_NO_FOREACH
    QT_DISABLE_DEPRECATED_BEFORE=0x060400)

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -fpch-preprocess)
if(WENDLORE_WERROR)
    add_compile_options(-Werror)
endif()

if(WENDLORE_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
endif()
