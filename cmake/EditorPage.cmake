# The editor page is built by its own tools (npm, esbuild). One target makes its packages and its files current.

find_program(WENDLORE_NODE NAMES node nodejs REQUIRED)
find_program(WENDLORE_NPM npm REQUIRED)

set(WENDLORE_PAGE_DIR ${CMAKE_SOURCE_DIR}/EditorPage)
set(WENDLORE_DIST_DIR ${CMAKE_SOURCE_DIR}/WendloreKit/Resources/dist)
set(WENDLORE_PAGE_PACKAGES ${WENDLORE_PAGE_DIR}/node_modules/.wendlores-stamp)

add_custom_command(
    OUTPUT ${WENDLORE_PAGE_PACKAGES}
    COMMAND ${WENDLORE_NPM} ci --no-audit --no-fund --loglevel=error
    COMMAND ${CMAKE_COMMAND} -E touch ${WENDLORE_PAGE_PACKAGES}
    DEPENDS ${WENDLORE_PAGE_DIR}/package-lock.json
    WORKING_DIRECTORY ${WENDLORE_PAGE_DIR}
    COMMENT "Installing the editor page's packages"
    VERBATIM)

file(GLOB_RECURSE WENDLORE_PAGE_SOURCES CONFIGURE_DEPENDS ${WENDLORE_PAGE_DIR}/src/*)
add_custom_command(
    OUTPUT ${WENDLORE_DIST_DIR}/index.html
    COMMAND ${WENDLORE_NODE} build.mjs
    COMMAND ${CMAKE_COMMAND} -E touch ${WENDLORE_DIST_DIR}/index.html
    DEPENDS ${WENDLORE_PAGE_PACKAGES} ${WENDLORE_PAGE_DIR}/build.mjs ${WENDLORE_PAGE_SOURCES}
    WORKING_DIRECTORY ${WENDLORE_PAGE_DIR}
    COMMENT "Building the editor page"
    VERBATIM)

add_custom_target(editor_page DEPENDS ${WENDLORE_DIST_DIR}/index.html)
