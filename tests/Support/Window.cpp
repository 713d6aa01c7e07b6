#include "Support/Window.h"

#include "Look/Fonts.h"

#include <QApplication>
#include <QTest>

namespace wendlore {

void useProductLook(ColorScheme scheme, Motion motion)
{
    auto* style = new Style;
    style->setMotion(motion);
    QApplication::setStyle(style);
    QApplication::setFont(interfaceFont());
    QApplication::setPalette(Colors::of(scheme).palette());
}

void showAt(QWidget& widget, QSize size)
{
    widget.resize(size);
    widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&widget));
}

QWidget* childNamed(const QWidget& parent, const QString& name)
{
    for (QWidget* child : parent.findChildren<QWidget*>()) {
        if (child->accessibleName() == name)
            return child;
    }
    return nullptr;
}

QImage pictureOf(QWidget& widget)
{
    return widget.grab().toImage();
}

} // namespace wendlore
