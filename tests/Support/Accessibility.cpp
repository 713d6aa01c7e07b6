#include "Support/Accessibility.h"

#include <QAccessible>
#include <QMetaEnum>
#include <QSet>

#include <functional>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

[[gnu::no_sanitize("vptr")]] bool isControl(const QAccessibleInterface& element)
{
    static const QSet<QAccessible::Role> roles{
        QAccessible::PushButton,  QAccessible::ButtonMenu, QAccessible::ButtonDropDown, QAccessible::CheckBox,
        QAccessible::RadioButton, QAccessible::ComboBox,   QAccessible::EditableText,   QAccessible::List,
        QAccessible::ListItem,    QAccessible::Tree,       QAccessible::TreeItem,       QAccessible::Table,
        QAccessible::Cell,        QAccessible::MenuItem,   QAccessible::PageTab,        QAccessible::Slider,
        QAccessible::SpinBox,     QAccessible::Link};
    return roles.contains(element.role()) || element.state().focusable;
}

QString roleName(QAccessible::Role role)
{
    const char* name = QMetaEnum::fromType<QAccessible::Role>().valueToKey(role);
    return name ? QString::fromLatin1(name) : QString::number(role);
}

using Visit = std::function<void(const QAccessibleInterface& element, const QString& path)>;

/// The engine's elements come without the type information that a sanitizer compares.
[[gnu::no_sanitize("vptr")]] void walk(QAccessibleInterface* element, const QString& above,
                                       const Visit& visit)
{
    if (!element || !element->isValid())
        return;
    const QString path =
        u"%1/%2 \"%3\""_s.arg(above, roleName(element->role()), element->text(QAccessible::Name));
    const bool isSeparator = element->role() == QAccessible::Separator;
    if (isControl(*element) && !isSeparator)
        visit(*element, path);
    for (int i = 0; i < element->childCount(); ++i)
        walk(element->child(i), path, visit);
}

} // namespace

QStringList namelessControls(QObject& root)
{
    QStringList nameless;
    walk(QAccessible::queryAccessibleInterface(&root), {},
         [&nameless](const QAccessibleInterface& element, const QString& path) {
             const bool hasRole =
                 element.role() != QAccessible::NoRole && element.role() != QAccessible::Client;
             if (element.text(QAccessible::Name).isEmpty() || !hasRole)
                 nameless.append(path);
         });
    return nameless;
}

QStringList controlNames(QObject& root)
{
    QStringList names;
    walk(QAccessible::queryAccessibleInterface(&root), {},
         [&names](const QAccessibleInterface& element, const QString&) {
             names.append(element.text(QAccessible::Name));
         });
    return names;
}

} // namespace wendlore
