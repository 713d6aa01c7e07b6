# What the library is built on. A host that links the installed library needs the same, so the installed package
# reads this file as well.

find_package(Qt6 6.4 REQUIRED COMPONENTS Core Gui Widgets Network DBus Svg Concurrent
             WebEngineCore WebEngineWidgets WebChannel)
find_package(ICU REQUIRED COMPONENTS uc i18n)
