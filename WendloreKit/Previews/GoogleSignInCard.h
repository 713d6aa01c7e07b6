#pragma once

#include <QWidget>

namespace wendlore {

/// Says that a document needs a sign-in at Google, and offers to sign in here or to open it in the browser.
class GoogleSignInCard final : public QWidget
{
    Q_OBJECT

public:
    /// `email` is the account that the document belongs to; empty when it is not known.
    explicit GoogleSignInCard(const QString& email, QWidget* parent = nullptr);

Q_SIGNALS:
    void signInWanted();
    void browserWanted();
};

} // namespace wendlore
