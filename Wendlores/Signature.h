#pragma once

#include <QByteArray>

#include <optional>

namespace wendlore {

/// A public Ed25519 key, against which a publisher's signatures are checked.
class PublicKey final
{
public:
    /// Reads the 32 bytes of a key in Base64; nothing for anything else.
    [[nodiscard]] static std::optional<PublicKey> fromBase64(const QByteArray& text);

    /// Whether `signature`, in Base64, was made for exactly these bytes.
    [[nodiscard]] bool verifies(QByteArrayView message, const QByteArray& signature) const;

private:
    explicit PublicKey(QByteArray bytes)
        : m_bytes(std::move(bytes))
    {}

    QByteArray m_bytes;
};

} // namespace wendlore
