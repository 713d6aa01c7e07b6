#pragma once

#include <QLineEdit>

namespace wendlore {

/// The window's title, which the user may change where it stands: Enter or leaving it takes the new name
/// over, Escape brings the old one back. Without the focus, a title that finds no room ends in an ellipsis.
class TitleField final : public QLineEdit
{
    Q_OBJECT

public:
    explicit TitleField(QWidget* parent = nullptr);

    void setTitle(const QString& title);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// The user wrote another title.
    void renamed(const QString& title);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void finish();

    QString m_title;
};

} // namespace wendlore
