#include "Vault/TemporaryName.h"

#include <QRandomGenerator>

#include <algorithm>

namespace wendlore {

namespace {

constexpr QByteArrayView prefix = ".wendlores-";
constexpr QByteArrayView alphabet = "abcdefghijklmnopqrstuvwxyz234567";
constexpr int randomLetters = 12;

} // namespace

QByteArray temporaryName()
{
    QByteArray name = prefix.toByteArray();
    for (int letter = 0; letter < randomLetters; ++letter)
        name += alphabet[QRandomGenerator::system()->bounded(int(alphabet.size()))];
    return name;
}

bool isTemporaryName(QByteArrayView name)
{
    return name.size() == prefix.size() + randomLetters && name.startsWith(prefix) &&
           std::all_of(name.begin() + prefix.size(), name.end(),
                       [](char letter) { return alphabet.contains(letter); });
}

} // namespace wendlore
