#include "Wendlores/Signature.h"

#include <sodium.h>

namespace wendlore {

namespace {

std::optional<QByteArray> bytesOf(const QByteArray& base64, unsigned size)
{
    const auto decoded = QByteArray::fromBase64Encoding(base64, QByteArray::AbortOnBase64DecodingErrors);
    if (!decoded || (*decoded).size() != qsizetype(size))
        return std::nullopt;
    return *decoded;
}

const unsigned char* raw(QByteArrayView bytes)
{
    return reinterpret_cast<const unsigned char*>(bytes.data());
}

} // namespace

std::optional<PublicKey> PublicKey::fromBase64(const QByteArray& text)
{
    auto bytes = bytesOf(text, crypto_sign_PUBLICKEYBYTES);
    if (!bytes || ::sodium_init() < 0)
        return std::nullopt;
    return PublicKey(*std::move(bytes));
}

bool PublicKey::verifies(QByteArrayView message, const QByteArray& signature) const
{
    const auto bytes = bytesOf(signature, crypto_sign_BYTES);
    return bytes &&
           ::crypto_sign_verify_detached(raw(*bytes), raw(message),
                                         static_cast<unsigned long long>(message.size()), raw(m_bytes)) == 0;
}

} // namespace wendlore
