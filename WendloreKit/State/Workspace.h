#pragma once

#include "Vault/FileURL.h"

#include <QString>
#include <QUrl>

namespace wendlore {

/// What the desktop does for the program outside its windows.
class Workspace
{
public:
    virtual ~Workspace() = default;

    /// Opens a web, mail or other address with the program that the user has for it.
    virtual void open(const QUrl& address) = 0;
    /// Opens a file in its default application.
    virtual void open(const FileURL& file) = 0;
    /// The computer's name as people call it; empty when it has none.
    [[nodiscard]] virtual QString computerName() const = 0;
};

} // namespace wendlore
