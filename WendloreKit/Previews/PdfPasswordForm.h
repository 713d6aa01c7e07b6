#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;

namespace wendlore {

/// Asks for the password of a locked PDF document.
class PdfPasswordForm final : public QWidget
{
    Q_OBJECT

public:
    explicit PdfPasswordForm(QWidget* parent = nullptr);

    /// Says that the password did not open the document, and asks again.
    void refuse();

Q_SIGNALS:
    void passwordGiven(const QString& password);

private:
    QLabel* m_message;
    QLineEdit* m_password;
};

} // namespace wendlore
