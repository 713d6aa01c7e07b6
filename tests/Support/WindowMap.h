#pragma once

#include "Fakes/FakeServices.h"
#include "State/AppState.h"
#include "Wendlores/MainWindow.h"

#include <QPoint>
#include <QRect>

namespace wendlore {

/// The main window of a program that runs beside the test, once more in the test's own process and without
/// the engine: it tells where on the screen the other one has its controls.
class WindowMap final
{
public:
    /// The program's window stands at `place`, shows `bucket`, and `selected` in it.
    WindowMap(const FileURL& bucket, const FileURL& selected, const QRect& place);

    /// The middle of the control of that accessible name.
    [[nodiscard]] QPoint control(const QString& name) const;
    [[nodiscard]] QPoint buttonWithText(const QString& text) const;
    /// The middle of an item's row in the tree.
    [[nodiscard]] QPoint row(const FileURL& item) const;
    [[nodiscard]] QPoint note() const;

private:
    [[nodiscard]] QPoint onScreen(const QWidget& widget, const QPoint& place) const;

    FakeServices m_services;
    AppState m_state;
    MainWindow m_window;
    QRect m_place;
};

} // namespace wendlore
