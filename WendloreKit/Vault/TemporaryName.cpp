#include "Vault/TemporaryName.h"

#include <QRandomGenerator>

#include <algorithm>

namespace wendlore {

namespace {

constexpr QByteArrayView temporaryPrefix = ".wendlores-";
constexpr QByteArrayView displacedPrefix = ".wendlores-former-";
constexpr QByteArrayView alphabet = "abcdefghijklmnopqrstuvwxyz234567";
constexpr int randomLetters = 12;

QByteArray freshName(QByteArrayView prefix)
{
    QByteArray name = prefix.toByteArray();
    for (int letter = 0; letter < randomLetters; ++letter)
        name += alphabet[QRandomGenerator::system()->bounded(int(alphabet.size()))];
    return name;
}

bool isFreshName(QByteArrayView name, QByteArrayView prefix)
{
    return name.size() == prefix.size() + randomLetters && name.startsWith(prefix) &&
           std::all_of(name.begin() + prefix.size(), name.end(),
                       [](char letter) { return alphabet.contains(letter); });
}

} // namespace

QByteArray temporaryName()
{
    return freshName(temporaryPrefix);
}

bool isTemporaryName(QByteArrayView name)
{
    return isFreshName(name, temporaryPrefix);
}

QByteArray displacedName()
{
    return freshName(displacedPrefix);
}

bool isDisplacedName(QByteArrayView name)
{
    return isFreshName(name, displacedPrefix);
}

} // namespace wendlore
