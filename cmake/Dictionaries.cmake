# The dictionaries that the web engine checks spelling with, made from those of the system. They lie beside every program
# that is built here, where the engine looks for them. Without them notes are not checked; everything else works.

find_program(WENDLORE_CONVERT_DICTIONARY qwebengine_convert_dict
             HINTS ${QT6_INSTALL_PREFIX}/${QT6_INSTALL_LIBEXECS} /usr/lib/qt6/libexec)
set(WENDLORE_DICTIONARIES_DIR ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/qtwebengine_dictionaries)
set(dictionaries)

foreach(dictionary sv_SE:sv-SE en_US:en-US)
    string(REPLACE ":" ";" names ${dictionary})
    list(GET names 0 source_name)
    list(GET names 1 name)
    find_file(WENDLORE_HUNSPELL_${source_name} ${source_name}.dic PATHS /usr/share/hunspell /usr/share/myspell/dicts)
    if(NOT WENDLORE_CONVERT_DICTIONARY OR NOT WENDLORE_HUNSPELL_${source_name})
        message(STATUS "No dictionary ${name}: qwebengine_convert_dict or ${source_name}.dic is missing")
        continue()
    endif()
    set(made ${WENDLORE_DICTIONARIES_DIR}/${name}.bdic)
    add_custom_command(
        OUTPUT ${made}
        COMMAND ${CMAKE_COMMAND} -E make_directory ${WENDLORE_DICTIONARIES_DIR}
        COMMAND ${WENDLORE_CONVERT_DICTIONARY} ${WENDLORE_HUNSPELL_${source_name}} ${made}
        DEPENDS ${WENDLORE_HUNSPELL_${source_name}}
        COMMENT "Converting the dictionary ${name}"
        VERBATIM)
    list(APPEND dictionaries ${made})
endforeach()

add_custom_target(dictionaries ALL DEPENDS ${dictionaries})
