// Measures an editor page in the web engine that ships: bench-page --page DIR --probe FILE [--keys N]
// [--rewrites] NOTE... Prints one JSON object: for every note how long it took to show and what every key
// press took.

#include "PageDriver.h"
#include "PageFolder.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>

#include <cstdio>

using namespace wendlore;
using namespace Qt::StringLiterals;

int main(int argc, char* argv[])
{
    PageFolder::registerScheme();
    QApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addOptions({
        {u"page"_s, u"The folder that holds the page."_s, u"folder"_s},
        {u"probe"_s, u"The script that measures in the page."_s, u"file"_s},
        {u"keys"_s, u"How many keys are typed."_s, u"count"_s, u"40"_s},
        {u"pace"_s, u"Milliseconds between two keys."_s, u"milliseconds"_s, u"60"_s},
        {u"rewrites"_s, u"The page writes the whole note in its own way."_s},
    });
    parser.addPositionalArgument(u"note"_s, u"The notes to measure with."_s);
    parser.process(application);

    const Reports reports = parser.isSet(u"rewrites"_s) ? Reports::rewritten : Reports::exact;
    PageDriver driver(parser.value(u"page"_s), parser.value(u"probe"_s), reports);
    QJsonObject results;
    for (const QString& path : parser.positionalArguments()) {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            qFatal("cannot read %s", qPrintable(path));
        const QString note = QString::fromUtf8(file.readAll());
        results.insert(QFileInfo(path).fileName(), driver.measure(note, parser.value(u"keys"_s).toInt(),
                                                                  parser.value(u"pace"_s).toInt()));
    }
    std::puts(QJsonDocument(results).toJson(QJsonDocument::Compact).constData());
    return 0;
}
