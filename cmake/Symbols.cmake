# Icons: Resources/symbols.txt maps each symbol name of the design to a drawing of the lucide-static package. The
# drawings are compiled in under ":/symbols/<symbol name>.svg".

set(WENDLORE_SYMBOLS_TABLE ${CMAKE_SOURCE_DIR}/WendloreKit/Resources/symbols.txt)
set(WENDLORE_SYMBOLS_QRC ${CMAKE_CURRENT_BINARY_DIR}/symbols.qrc)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${WENDLORE_SYMBOLS_TABLE})

if(NOT EXISTS ${WENDLORE_PAGE_DIR}/node_modules/lucide-static/icons)
    message(STATUS "Installing the editor page's packages (icons)")
    execute_process(COMMAND ${WENDLORE_NPM} ci --no-audit --no-fund --loglevel=error
                    WORKING_DIRECTORY ${WENDLORE_PAGE_DIR} COMMAND_ERROR_IS_FATAL ANY)
    file(TOUCH ${WENDLORE_PAGE_PACKAGES})
endif()

file(STRINGS ${WENDLORE_SYMBOLS_TABLE} symbol_lines REGEX "^[a-z]")
set(qrc "<RCC>\n<qresource prefix=\"/symbols\">\n")
foreach(line ${symbol_lines})
    string(REGEX MATCH "^([^ ]+) +([^ ]+)" matched ${line})
    set(drawing ${WENDLORE_PAGE_DIR}/node_modules/lucide-static/icons/${CMAKE_MATCH_2}.svg)
    if(NOT EXISTS ${drawing})
        message(FATAL_ERROR "symbols.txt names the drawing ${CMAKE_MATCH_2}, which lucide-static does not have")
    endif()
    string(APPEND qrc "<file alias=\"${CMAKE_MATCH_1}.svg\">${drawing}</file>\n")
endforeach()
string(APPEND qrc "</qresource>\n</RCC>\n")
file(CONFIGURE OUTPUT ${WENDLORE_SYMBOLS_QRC} CONTENT "${qrc}" @ONLY)
