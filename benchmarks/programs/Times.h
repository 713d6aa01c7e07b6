// What a measuring program without a peer found, printed for the member that runs it.

#pragma once

#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cstdio>
#include <map>
#include <vector>

namespace wendlore {

/// Times of the same step taken several times, by the step's name; in milliseconds.
using Times = std::map<const char*, std::vector<double>>;

/// Prints the median and the longest time of each step: {"NAME": 1.2, "NAME, longest": 3.4}.
inline void print(const Times& times)
{
    QJsonObject found;
    for (auto [name, taken] : times) {
        std::ranges::sort(taken);
        found.insert(QLatin1StringView(name), taken.at(taken.size() / 2));
        found.insert(QString::fromLatin1(name) + QStringLiteral(", longest"), taken.back());
    }
    std::puts(QJsonDocument(found).toJson(QJsonDocument::Compact).constData());
}

} // namespace wendlore
