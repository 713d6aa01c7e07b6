#pragma once

#include "Vault/FileURL.h"

#include <QMetaMethod>
#include <QObject>

#include <set>

namespace wendlore {

/// The files that have a window of their own. A file is edited in one place at a time, so whoever else would
/// show one of them looks here first. Locations are kept and looked up in standardised form.
///
/// Views ask here for such a window to be opened or closed; the scene that makes the windows listens.
class OpenFileWindows final : public QObject
{
    Q_OBJECT

public:
    /// The one registry of the program; on the main thread only.
    [[nodiscard]] static OpenFileWindows& shared();

    [[nodiscard]] const std::set<FileURL>& open() const { return m_open; }
    [[nodiscard]] bool isOpen(const FileURL& file) const;

    /// Whether there is anybody who makes such windows; not where the views are embedded in another program.
    [[nodiscard]] bool canOpen() const
    {
        return isSignalConnected(QMetaMethod::fromSignal(&OpenFileWindows::windowRequested));
    }

    /// For the windows themselves, when they appear and disappear.
    void insert(const FileURL& file);
    void remove(const FileURL& file);

    /// Opens a window for `file`, or brings forward the one that it has.
    void requestWindow(const FileURL& file) { Q_EMIT windowRequested(file); }
    /// Closes the window of `file`, once what was typed there is written.
    void requestDismissal(const FileURL& file) { Q_EMIT dismissalRequested(file); }

Q_SIGNALS:
    void openChanged();
    void windowRequested(const wendlore::FileURL& file);
    void dismissalRequested(const wendlore::FileURL& file);

private:
    std::set<FileURL> m_open;
};

} // namespace wendlore
