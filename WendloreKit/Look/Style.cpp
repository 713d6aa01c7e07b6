#include "Look/Style.h"

#include "Look/Colors.h"
#include "Look/Drawing.h"
#include "Look/Metrics.h"
#include "Look/StyleComboBox.h"
#include "Look/StyleMenus.h"
#include "Look/StyleScrollBars.h"
#include "Look/Symbols.h"

#include <QAbstractButton>
#include <QHash>
#include <QMenu>
#include <QMessageBox>
#include <QPainter>
#include <QStyleOption>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

constexpr int buttonPadding = 18;
constexpr int pushButtonHeight = 34;
constexpr int lineEditHeight = 32;
constexpr int messageMargin = 20;

void drawPushButton(QPainter& painter, const QStyleOptionButton& button)
{
    const Colors& colors = Colors::of(button.palette);
    const bool isEnabled = button.state.testFlag(QStyle::State_Enabled);
    const bool isDown = button.state.testFlag(QStyle::State_Sunken);
    const bool isHovered = isEnabled && button.state.testFlag(QStyle::State_MouseOver);
    if (button.features.testFlag(QStyleOptionButton::DefaultButton) && isEnabled) {
        const int darker = isDown ? 115 : isHovered ? 107 : 100;
        fillRounded(painter, button.rect, colors.accent.darker(darker), metrics::radius);
    } else {
        fillRounded(painter, button.rect,
                    isDown      ? colors.pressed
                    : isHovered ? colors.hover
                                : colors.paper,
                    metrics::radius);
        strokeRounded(painter, button.rect, colors.line, 1, metrics::radius);
    }
    if (button.state.testFlag(QStyle::State_HasFocus) &&
        button.state.testFlag(QStyle::State_KeyboardFocusChange))
        drawFocusRing(painter, button.rect,
                      button.features.testFlag(QStyleOptionButton::DefaultButton) ? colors.onAccent
                                                                                  : colors.accent);
}

/// The text of a button that can be pressed, in active windows and in others.
void setTextColor(QPalette& palette, const QColor& color)
{
    palette.setColor(QPalette::Active, QPalette::ButtonText, color);
    palette.setColor(QPalette::Inactive, QPalette::ButtonText, color);
}

void drawLineEdit(QPainter& painter, const QStyleOption& edit)
{
    const Colors& colors = Colors::of(edit.palette);
    const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(&edit);
    const bool hasFrame = !frame || frame->lineWidth > 0;
    fillRounded(painter, edit.rect, colors.paper, metrics::radius);
    if (edit.state.testFlag(QStyle::State_HasFocus) && !edit.state.testFlag(QStyle::State_ReadOnly))
        drawFocusRing(painter, edit.rect, colors.accent);
    else if (hasFrame)
        strokeRounded(painter, edit.rect, colors.strongLine, 1, metrics::radius);
}

/// The symbol for an icon of the toolkit's menu bars, toolbars and file dialogs; empty where there is none.
QString standardSymbol(QStyle::StandardPixmap icon)
{
    static const QHash<QStyle::StandardPixmap, QString> symbols{
        {QStyle::SP_ToolBarHorizontalExtensionButton, u"chevron.right.2"_s},
        {QStyle::SP_ToolBarVerticalExtensionButton, u"chevron.down"_s},
        {QStyle::SP_ArrowBack, u"chevron.left"_s},
        {QStyle::SP_ArrowLeft, u"chevron.left"_s},
        {QStyle::SP_FileDialogBack, u"chevron.left"_s},
        {QStyle::SP_ArrowForward, u"chevron.right"_s},
        {QStyle::SP_ArrowRight, u"chevron.right"_s},
        {QStyle::SP_MessageBoxWarning, u"exclamationmark.triangle"_s},
        {QStyle::SP_MessageBoxCritical, u"exclamationmark.triangle"_s},
        {QStyle::SP_LineEditClearButton, u"xmark.circle.fill"_s},
        {QStyle::SP_FileDialogToParent, u"arrow.up"_s},
        {QStyle::SP_FileDialogNewFolder, u"folder.badge.plus"_s},
        {QStyle::SP_FileDialogListView, u"list.bullet"_s},
        {QStyle::SP_FileDialogDetailedView, u"tablecells"_s},
        {QStyle::SP_DirIcon, u"folder"_s},
        {QStyle::SP_DirClosedIcon, u"folder"_s},
        {QStyle::SP_DirLinkIcon, u"folder"_s},
        {QStyle::SP_DirOpenIcon, u"folder"_s},
        {QStyle::SP_FileIcon, u"doc.plaintext"_s},
        {QStyle::SP_FileLinkIcon, u"doc.plaintext"_s},
        {QStyle::SP_DirHomeIcon, u"house"_s},
        {QStyle::SP_ComputerIcon, u"desktopcomputer"_s},
        {QStyle::SP_DesktopIcon, u"desktopcomputer"_s},
        {QStyle::SP_DriveHDIcon, u"internaldrive"_s},
    };
    return symbols.value(icon);
}

EntryTone toneOf(const QStyleOptionMenuItem& item, const QWidget* widget)
{
    const auto* menu = qobject_cast<const QMenu*>(widget);
    const QAction* action = menu ? menu->actionAt(item.rect.center()) : nullptr;
    return action && action->property(destructiveProperty).toBool() ? EntryTone::destructive
                                                                    : EntryTone::ordinary;
}

} // namespace

Style::Style()
    : QProxyStyle(u"Fusion"_s)
{}

void Style::polish(QWidget* widget)
{
    QProxyStyle::polish(widget);
    if (qobject_cast<QAbstractButton*>(widget) || widget->inherits("QScrollBar") ||
        widget->inherits("QComboBox"))
        widget->setAttribute(Qt::WA_Hover);
    // The menus and sheets of a window with colours of its own are windows that would not get them.
    const QWidget* parent = widget->parentWidget();
    if (parent && widget->isWindow() && parent->window()->testAttribute(Qt::WA_SetPalette))
        widget->setPalette(parent->window()->palette());
}

void Style::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                          const QWidget* widget) const
{
    const Colors& colors = Colors::of(option->palette);
    switch (element) {
    case PE_FrameFocusRect:
        drawFocusRing(*painter, option->rect, colors.accent);
        return;
    case PE_PanelLineEdit:
    case PE_FrameLineEdit:
        drawLineEdit(*painter, *option);
        return;
    case PE_PanelMenu:
    case PE_PanelTipLabel:
        painter->fillRect(option->rect, colors.paper);
        strokeRounded(*painter, option->rect, colors.line, 1, 0);
        return;
    case PE_FrameMenu:
        return;
    default:
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

void Style::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                        const QWidget* widget) const
{
    switch (element) {
    case CE_PushButtonBevel:
        if (const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option))
            drawPushButton(*painter, *button);
        return;
    case CE_PushButtonLabel:
        if (const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option)) {
            QStyleOptionButton label = *button;
            if (label.features.testFlag(QStyleOptionButton::DefaultButton))
                setTextColor(label.palette, Colors::of(label.palette).onAccent);
            QProxyStyle::drawControl(element, &label, painter, widget);
        }
        return;
    case CE_MenuItem:
        if (const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option))
            drawMenuItem(*painter, *item, toneOf(*item, widget));
        return;
    case CE_MenuBarItem:
        if (const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option))
            drawMenuBarItem(*painter, *item);
        return;
    case CE_MenuBarEmptyArea:
        painter->fillRect(option->rect, Colors::of(option->palette).side);
        return;
    case CE_Splitter:
        painter->fillRect(option->rect, Colors::of(option->palette).line);
        return;
    default:
        QProxyStyle::drawControl(element, option, painter, widget);
    }
}

void Style::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                               const QWidget* widget) const
{
    const auto* slider = qstyleoption_cast<const QStyleOptionSlider*>(option);
    const auto* box = qstyleoption_cast<const QStyleOptionComboBox*>(option);
    if (control == CC_ComboBox && box)
        drawComboBox(*painter, *box);
    else if (control == CC_ScrollBar && slider)
        drawScrollBar(*painter, *slider,
                      slider->palette.color(widget ? widget->backgroundRole() : QPalette::Window),
                      subControlRect(control, option, SC_ScrollBarSlider, widget));
    else
        QProxyStyle::drawComplexControl(control, option, painter, widget);
}

QRect Style::subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                            const QWidget* widget) const
{
    const auto* slider = qstyleoption_cast<const QStyleOptionSlider*>(option);
    if (control == CC_ScrollBar && slider)
        return scrollBarPart(*slider, part);
    return QProxyStyle::subControlRect(control, option, part, widget);
}

QSize Style::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                              const QWidget* widget) const
{
    switch (type) {
    case CT_PushButton:
        if (const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option))
            return {button->fontMetrics.horizontalAdvance(button->text) + 2 * buttonPadding,
                    pushButtonHeight};
        break;
    case CT_ComboBox:
        return {menuWidth(size.width()), comboBoxHeight}; // its list is as wide as the box itself
    case CT_LineEdit:
        return {size.width() + 2 * metrics::inset, std::max(size.height(), lineEditHeight)};
    case CT_MenuItem:
        if (const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option))
            return menuItemSize(*item, size);
        break;
    case CT_MenuBarItem:
        return menuBarItemSize(size);
    default:
        break;
    }
    return QProxyStyle::sizeFromContents(type, option, size, widget);
}

int Style::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const
{
    switch (metric) {
    case PM_ScrollBarExtent:
        return scrollBarExtent;
    case PM_LayoutLeftMargin:
    case PM_LayoutTopMargin:
    case PM_LayoutRightMargin:
    case PM_LayoutBottomMargin:
        if (qobject_cast<const QMessageBox*>(widget))
            return messageMargin;
        return QProxyStyle::pixelMetric(metric, option, widget);
    case PM_SplitterWidth:
    case PM_MenuPanelWidth:
        return 1;
    case PM_MenuHMargin:
    case PM_MenuVMargin:
        return menuMargin;
    case PM_MenuBarHMargin:
        return metrics::inset;
    case PM_MenuBarVMargin:
    case PM_MenuBarItemSpacing:
        return 2;
    case PM_MenuBarPanelWidth:
    case PM_ButtonShiftHorizontal:
    case PM_ButtonShiftVertical:
        return 0;
    case PM_SmallIconSize:
    case PM_ButtonIconSize:
    case PM_ToolBarIconSize:
        return metrics::icon;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

/// The common icons are our own: Qt's are picture files of another look, and the first picture file makes the
/// program load and ask every image plug-in there is, which is a good part of its start.
QIcon Style::standardIcon(StandardPixmap icon, const QStyleOption* option, const QWidget* widget) const
{
    const QString symbol = standardSymbol(icon);
    return symbol.isEmpty() ? QProxyStyle::standardIcon(icon, option, widget) : symbolIcon(symbol);
}

int Style::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                     QStyleHintReturn* result) const
{
    switch (hint) {
    case SH_Widget_Animation_Duration:
        return m_motion == Motion::wanted ? static_cast<int>(metrics::motion.count()) : 0;
    case SH_DialogButtonBox_ButtonsHaveIcons:
    case SH_UnderlineShortcut:
    case SH_EtchDisabledText:
    case SH_DitherDisabledText:
        return 0;
    case SH_MenuBar_MouseTracking:
    case SH_Menu_MouseTracking:
        return 1;
    default:
        return QProxyStyle::styleHint(hint, option, widget, result);
    }
}

} // namespace wendlore
