#pragma once

#include "Vault/FileURL.h"

#include <QWebEngineUrlSchemeHandler>

#include <functional>
#include <optional>

namespace wendlore {

/// Serves the "vault" scheme to the editor page: the page's own files, what it is to begin with, and the open
/// bucket's assets. Files are read in the background; a request that the page has given up gets no answer.
class WendloreSchemeHandler final : public QWebEngineUrlSchemeHandler
{
    Q_OBJECT

public:
    using VaultProvider = std::function<std::optional<FileURL>()>;

    explicit WendloreSchemeHandler(QObject* parent = nullptr);

    /// Who knows the open bucket's root; asked at every request.
    void setVaultProvider(VaultProvider provider) { m_vaultProvider = std::move(provider); }

    /// Who knows the script that the page is to begin with; asked whenever the page asks for it.
    void setBeginning(std::function<QByteArray()> beginning) { m_beginning = std::move(beginning); }

    void requestStarted(QWebEngineUrlRequestJob* job) override;

private:
    VaultProvider m_vaultProvider;
    std::function<QByteArray()> m_beginning;
};

} // namespace wendlore
