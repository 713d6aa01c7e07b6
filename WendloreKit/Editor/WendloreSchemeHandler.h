#pragma once

#include "Vault/FileURL.h"

#include <QWebEngineUrlSchemeHandler>

#include <functional>
#include <optional>

namespace wendlore {

/// Serves the "vault" scheme to the editor page: the page's own files, and the open bucket's assets. Files
/// are read in the background; a request that the page has given up gets no answer.
class WendloreSchemeHandler final : public QWebEngineUrlSchemeHandler
{
    Q_OBJECT

public:
    using VaultProvider = std::function<std::optional<FileURL>()>;

    explicit WendloreSchemeHandler(QObject* parent = nullptr);

    /// Who knows the open bucket's root; asked at every request.
    void setVaultProvider(VaultProvider provider) { m_vaultProvider = std::move(provider); }

    void requestStarted(QWebEngineUrlRequestJob* job) override;

private:
    VaultProvider m_vaultProvider;
};

} // namespace wendlore
