#pragma once

#include <QToolButton>
#include <QVariantAnimation>

namespace wendlore {

/// A button without a box: a rounded ground shows only under the pointer, while pressed and when checked. It
/// takes the keyboard focus by Tab only, so a click leaves the caret where the user types.
class FlatButton : public QToolButton
{
    Q_OBJECT

public:
    explicit FlatButton(QWidget* parent = nullptr);

    /// What the button is called for people who cannot see it, and the text that explains it to the others.
    void describe(const QString& name, const QString& help);

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) final;

    /// Draws what stands on the ground.
    virtual void paintContents(QPainter& painter) = 0;
    /// Whether the button looks pressed: held down, checked, or its menu is open.
    [[nodiscard]] bool isShownPressed() const;
    /// How far the pointer's ground has faded in, 0 to 1.
    [[nodiscard]] double hover() const { return m_hover; }

private:
    void fadeTo(double hover);

    QVariantAnimation m_fade;
    double m_hover = 0;
};

/// How strongly something stands out.
enum class Tone { strong, muted };

/// A flat button that shows one symbol.
class IconButton final : public FlatButton
{
    Q_OBJECT

public:
    IconButton(QString symbol, const QString& name, const QString& help, QWidget* parent = nullptr);

    void setTone(Tone tone) { m_tone = tone; }
    [[nodiscard]] const QString& symbol() const { return m_symbol; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintContents(QPainter& painter) override;

private:
    QString m_symbol;
    Tone m_tone = Tone::muted;
};

/// A flat button with a text, perhaps a symbol before it and a small one at its end.
class LabelButton final : public FlatButton
{
    Q_OBJECT

public:
    LabelButton(const QString& text, Tone tone, QWidget* parent = nullptr);

    /// A symbol before the text; in the accent colour where the text is strong.
    void setLeadingSymbol(const QString& symbol, int size);
    /// A small symbol at the button's far end.
    void setTrailingSymbol(const QString& symbol) { m_trailing = symbol; }
    [[nodiscard]] const QString& leadingSymbol() const { return m_leading; }
    [[nodiscard]] const QString& trailingSymbol() const { return m_trailing; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintContents(QPainter& painter) override;

private:
    /// Room on both sides of the text.
    [[nodiscard]] int before() const;
    [[nodiscard]] int after() const;

    Tone m_tone;
    QString m_leading;
    int m_leadingSize = 0;
    QString m_trailing;
};

} // namespace wendlore
