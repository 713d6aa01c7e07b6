#include "Typography/TypographyTheme.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

QJsonObject standardObject()
{
    return QJsonDocument::fromJson(*TypographyTheme::standard().toJson()).object();
}

/// The standard theme's file with one value of the level "h3" replaced, or removed when undefined.
QByteArray withValue(const QString& key, const QJsonValue& value)
{
    QJsonObject theme = standardObject();
    QJsonObject level = theme[u"h3"_s].toObject();
    level[key] = value;
    theme[u"h3"_s] = level;
    return QJsonDocument(theme).toJson();
}

} // namespace

class TypographyThemeTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void standardThemeHasTheDesignsValues_data();
    void standardThemeHasTheDesignsValues();
    void survivesWritingAndReading();
    void writesTheKeysOfEveryLevel();
    void extraKeysAreIgnored();
    void missingLevelMakesTheFileInvalid_data();
    void missingLevelMakesTheFileInvalid();
    void missingOrMistypedKeyMakesTheFileInvalid_data();
    void missingOrMistypedKeyMakesTheFileInvalid();
    void whatIsNoThemeIsRejected_data();
    void whatIsNoThemeIsRejected();
    void numberThatJsonCannotSayIsNotWritten();
};

void TypographyThemeTests::standardThemeHasTheDesignsValues_data()
{
    QTest::addColumn<TypographyLevelStyle>("level");
    QTest::addColumn<TypographyLevelStyle>("expected");

    const TypographyTheme theme = TypographyTheme::standard();
    using Level = TypographyLevelStyle;
    const QString system = u"system"_s;
    QTest::newRow("body") << theme.body << Level{system, 12, 1.4, 5.5, 0, 0, false, false, false, false, 20};
    QTest::newRow("list") << theme.list << Level{system, 12, 1.4, 6, 0, 0, false, false, false, false, 20};
    QTest::newRow("h1") << theme.h1 << Level{system, 20, 1.0, 0, 9.7, 12, false, false, false, false, 20};
    QTest::newRow("h2") << theme.h2 << Level{system, 16, 1.15, 0, 26, 7, true, false, false, false, 20};
    QTest::newRow("h3") << theme.h3 << Level{system, 14, 1.15, 0, 20, 3, true, false, false, false, 20};
    QTest::newRow("h4") << theme.h4 << Level{system, 12, 1.15, 0, 14, 3, true, false, false, false, 20};
    QTest::newRow("h5") << theme.h5 << Level{system, 10, 1.15, 0, 18, 3, false, false, true, true, 20};
}

void TypographyThemeTests::standardThemeHasTheDesignsValues()
{
    QFETCH(const TypographyLevelStyle, level);

    QTEST(level, "expected");
}

void TypographyThemeTests::survivesWritingAndReading()
{
    TypographyTheme theme = TypographyTheme::standard();
    theme.h2 = {u"\"gill\" ' åäö"_s, 13.5, 1e-7, 1e20, 0.1, 1.0 / 3, true, true, true, true, -3};

    QCOMPARE(TypographyTheme::fromJson(*theme.toJson()), theme);
}

void TypographyThemeTests::writesTheKeysOfEveryLevel()
{
    const QJsonObject theme = standardObject();

    QCOMPARE(theme.keys(), (QStringList{u"body"_s, u"h1"_s, u"h2"_s, u"h3"_s, u"h4"_s, u"h5"_s, u"list"_s}));
    QCOMPARE(theme[u"h5"_s].toObject(), (QJsonObject{{u"fontFamilyKey"_s, u"system"_s},
                                                     {u"fontSize"_s, 10},
                                                     {u"lineHeight"_s, 1.15},
                                                     {u"paragraphSpacing"_s, 0},
                                                     {u"spacingAbove"_s, 18},
                                                     {u"spacingBelow"_s, 3},
                                                     {u"bold"_s, false},
                                                     {u"italic"_s, false},
                                                     {u"underline"_s, true},
                                                     {u"uppercase"_s, true},
                                                     {u"indent"_s, 20}}));
}

void TypographyThemeTests::extraKeysAreIgnored()
{
    QJsonObject theme = standardObject();
    theme[u"comment"_s] = u"Min egen"_s;

    QCOMPARE(TypographyTheme::fromJson(QJsonDocument(theme).toJson()), TypographyTheme::standard());
    QCOMPARE(TypographyTheme::fromJson(withValue(u"comment"_s, 7)), TypographyTheme::standard());
}

void TypographyThemeTests::missingLevelMakesTheFileInvalid_data()
{
    QTest::addColumn<QString>("level");

    for (const QString& level : standardObject().keys())
        QTest::newRow(qPrintable(level)) << level;
}

void TypographyThemeTests::missingLevelMakesTheFileInvalid()
{
    QFETCH(const QString, level);
    QJsonObject theme = standardObject();
    theme.remove(level);

    QVERIFY(!TypographyTheme::fromJson(QJsonDocument(theme).toJson()));
}

void TypographyThemeTests::missingOrMistypedKeyMakesTheFileInvalid_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QJsonValue>("value");

    const QJsonObject level = standardObject()[u"h3"_s].toObject();
    for (auto field = level.begin(); field != level.end(); ++field) {
        const QByteArray name = field.key().toUtf8();
        QTest::newRow(name + " missing") << field.key() << QJsonValue(QJsonValue::Undefined);
        QTest::newRow(name + " null") << field.key() << QJsonValue();
        QTest::newRow(name + " list") << field.key() << QJsonValue(QJsonArray());
        if (!field->isString())
            QTest::newRow(name + " as text") << field.key() << QJsonValue(u"12"_s);
        if (!field->isDouble())
            QTest::newRow(name + " as number") << field.key() << QJsonValue(1);
        if (!field->isBool())
            QTest::newRow(name + " as flag") << field.key() << QJsonValue(true);
    }
}

void TypographyThemeTests::missingOrMistypedKeyMakesTheFileInvalid()
{
    QFETCH(const QString, key);
    QFETCH(const QJsonValue, value);

    QVERIFY(!TypographyTheme::fromJson(withValue(key, value)));
}

void TypographyThemeTests::whatIsNoThemeIsRejected_data()
{
    QTest::addColumn<QByteArray>("json");

    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("a list") << QByteArray("[]");
    QTest::newRow("broken off") << TypographyTheme::standard().toJson()->chopped(1);
    QTest::newRow("followed by more") << *TypographyTheme::standard().toJson() + "x";
    QTest::newRow("levels that are no objects")
        << QByteArray(R"({"body":1,"list":1,"h1":1,"h2":1,"h3":1,"h4":1,"h5":1})");
    QTest::newRow("nested too deep") << QByteArray(100000, '[');
    QTest::newRow("a picture") << QByteArray("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16);
}

void TypographyThemeTests::whatIsNoThemeIsRejected()
{
    QFETCH(const QByteArray, json);

    QVERIFY(!TypographyTheme::fromJson(json));
}

void TypographyThemeTests::numberThatJsonCannotSayIsNotWritten()
{
    TypographyTheme theme = TypographyTheme::standard();
    theme.list.indent = qInf();

    QVERIFY(!theme.toJson());
}

QTEST_GUILESS_MAIN(TypographyThemeTests)
#include "TypographyThemeTests.moc"
