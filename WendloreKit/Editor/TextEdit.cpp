#include "Editor/TextEdit.h"

#include <QJsonValue>

#include <limits>

namespace wendlore {

using namespace Qt::StringLiterals;

namespace {

/// -1 for what is no whole number that can be an offset.
qsizetype offsetIn(const QJsonObject& body, QLatin1StringView key)
{
    const double number = body.value(key).toDouble(-1);
    const bool isOffset = number >= 0 && number <= std::numeric_limits<int>::max();
    return isOffset && static_cast<double>(static_cast<qsizetype>(number)) == number
               ? static_cast<qsizetype>(number)
               : -1;
}

} // namespace

std::optional<TextEdit> TextEdit::fromMessage(const QJsonObject& body)
{
    const QJsonValue insert = body.value("insert"_L1);
    const qsizetype from = offsetIn(body, "from"_L1);
    const qsizetype to = offsetIn(body, "to"_L1);
    const qsizetype count = offsetIn(body, "count"_L1);
    const qsizetype length = offsetIn(body, "length"_L1);
    if (!insert.isString() || from < 0 || to < from || count < 1 || length < 0)
        return std::nullopt;
    return TextEdit{from, to, insert.toString(), static_cast<int>(count), length};
}

std::optional<QString> TextEdit::appliedTo(const QString& text) const
{
    if (to > text.size() || text.size() - (to - from) + insert.size() != length)
        return std::nullopt;
    QString result;
    result.reserve(length);
    result.append(QStringView(text).first(from)).append(insert).append(QStringView(text).sliced(to));
    return result;
}

} // namespace wendlore
