#include "Typography/TypographyScript.h"

#include "Typography/TypographyTheme.h"

#include <QRegularExpression>
#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

struct Property final
{
    QString name;
    QString value;

    friend bool operator==(const Property&, const Property&) = default;
};

/// The properties that the script sets, in order.
QList<Property> properties(const TypographyTheme& theme)
{
    static const QRegularExpression statement(u"^r\\.style\\.setProperty\\('([^']+)','([^']+)'\\);$"_s,
                                              QRegularExpression::MultilineOption);
    QList<Property> found;
    for (auto matches = statement.globalMatch(typographyScript(theme)); matches.hasNext();) {
        const auto match = matches.next();
        found.append({match.captured(1), match.captured(2)});
    }
    return found;
}

QString valueOf(const QString& name, const TypographyTheme& theme)
{
    for (const Property& property : properties(theme)) {
        if (property.name == name)
            return property.value;
    }
    return {};
}

} // namespace

class TypographyScriptTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void scriptIsOneFunctionThatRunsItself();
    void propertiesOfTheStandardTheme();
    void everyPropertyTakesItsOwnField();
    void fontKeysGiveTheirStacks_data();
    void fontKeysGiveTheirStacks();
    void boldWeightDependsOnTheLevel_data();
    void boldWeightDependsOnTheLevel();
    void looksAreWrittenAsCss();
    void numbersAlwaysHaveAFraction_data();
    void numbersAlwaysHaveAFraction();
    void anyNumberReadsBackTheSame_data();
    void anyNumberReadsBackTheSame();
    void zoomScriptSetsTheZoomProperty();
};

void TypographyScriptTests::scriptIsOneFunctionThatRunsItself()
{
    TypographyTheme odd = TypographyTheme::standard();
    odd.body.fontFamilyKey = u"');alert(1);('"_s;
    for (const TypographyTheme& theme : {TypographyTheme::standard(), odd, TypographyTheme()}) {
        const QString script = typographyScript(theme);

        QVERIFY(script.startsWith(
            u"(function(){\nvar r=document.documentElement;\nr.style.setProperty('--body-font','"_s));
        QVERIFY(script.endsWith(u"');\n})();"_s));
        QCOMPARE(script.count(u'\n'), 64);
        QCOMPARE(properties(theme).size(), 62);
        QVERIFY(!script.contains(u"alert"_s));
    }
}

void TypographyScriptTests::propertiesOfTheStandardTheme()
{
    const QString system = u"-apple-system, BlinkMacSystemFont, \"SF Pro Text\", system-ui, sans-serif"_s;
    QList<Property> expected{
        {u"--body-font"_s, system},          {u"--body-size"_s, u"12.0px"_s},
        {u"--body-lh"_s, u"1.4"_s},          {u"--body-spacing"_s, u"5.5px"_s},
        {u"--body-weight"_s, u"400"_s},      {u"--body-style"_s, u"normal"_s},
        {u"--body-decoration"_s, u"none"_s}, {u"--body-transform"_s, u"none"_s},
        {u"--list-font"_s, system},          {u"--list-size"_s, u"12.0px"_s},
        {u"--list-lh"_s, u"1.4"_s},          {u"--list-item-spacing"_s, u"6.0px"_s},
        {u"--list-weight"_s, u"400"_s},      {u"--list-style"_s, u"normal"_s},
        {u"--list-decoration"_s, u"none"_s}, {u"--list-transform"_s, u"none"_s},
        {u"--list-indent"_s, u"20.0px"_s},
    };
    const auto heading = [&](const QString& level, const QStringList& values) {
        const QStringList names{u"font"_s,   u"size"_s,  u"lh"_s,         u"spacing"_s,  u"spacing-below"_s,
                                u"weight"_s, u"style"_s, u"decoration"_s, u"transform"_s};
        for (qsizetype index = 0; index < names.size(); ++index)
            expected.append({u"--"_s + level + u'-' + names[index], values[index]});
    };
    heading(u"h1"_s, {system, u"20.0px"_s, u"1.0"_s, u"9.7px"_s, u"12.0px"_s, u"400"_s, u"normal"_s,
                      u"none"_s, u"none"_s});
    heading(u"h2"_s, {system, u"16.0px"_s, u"1.15"_s, u"26.0px"_s, u"7.0px"_s, u"700"_s, u"normal"_s,
                      u"none"_s, u"none"_s});
    heading(u"h3"_s, {system, u"14.0px"_s, u"1.15"_s, u"20.0px"_s, u"3.0px"_s, u"700"_s, u"normal"_s,
                      u"none"_s, u"none"_s});
    heading(u"h4"_s, {system, u"12.0px"_s, u"1.15"_s, u"14.0px"_s, u"3.0px"_s, u"700"_s, u"normal"_s,
                      u"none"_s, u"none"_s});
    heading(u"h5"_s, {system, u"10.0px"_s, u"1.15"_s, u"18.0px"_s, u"3.0px"_s, u"400"_s, u"normal"_s,
                      u"underline"_s, u"uppercase"_s});

    const QList<Property> written = properties(TypographyTheme::standard());

    for (qsizetype index = 0; index < expected.size(); ++index) {
        QCOMPARE(written.value(index).name, expected[index].name);
        QCOMPARE(written.value(index).value, expected[index].value);
    }
    QCOMPARE(written.size(), expected.size());
}

void TypographyScriptTests::everyPropertyTakesItsOwnField()
{
    TypographyTheme theme = TypographyTheme::standard();
    theme.body = {u"mono"_s, 1, 2, 3, 901, 902, true, true, true, true, 903};
    theme.list = {u"mono"_s, 4, 5, 6, 904, 905, true, true, true, true, 7};
    theme.h3 = {u"mono"_s, 8, 9, 906, 10, 11, true, true, true, true, 907};

    QCOMPARE(valueOf(u"--body-size"_s, theme), u"1.0px"_s);
    QCOMPARE(valueOf(u"--body-lh"_s, theme), u"2.0"_s);
    QCOMPARE(valueOf(u"--body-spacing"_s, theme), u"3.0px"_s);
    QCOMPARE(valueOf(u"--list-size"_s, theme), u"4.0px"_s);
    QCOMPARE(valueOf(u"--list-lh"_s, theme), u"5.0"_s);
    QCOMPARE(valueOf(u"--list-item-spacing"_s, theme), u"6.0px"_s);
    QCOMPARE(valueOf(u"--list-indent"_s, theme), u"7.0px"_s);
    QCOMPARE(valueOf(u"--h3-size"_s, theme), u"8.0px"_s);
    QCOMPARE(valueOf(u"--h3-lh"_s, theme), u"9.0"_s);
    QCOMPARE(valueOf(u"--h3-spacing"_s, theme), u"10.0px"_s);
    QCOMPARE(valueOf(u"--h3-spacing-below"_s, theme), u"11.0px"_s);
    for (const Property& property : properties(theme))
        QVERIFY2(!property.value.startsWith("90"_L1), qPrintable(property.name));
}

void TypographyScriptTests::fontKeysGiveTheirStacks_data()
{
    QTest::addColumn<QString>("stack");

    const QString system = u"-apple-system, BlinkMacSystemFont, \"SF Pro Text\", system-ui, sans-serif"_s;
    QTest::newRow("system") << system;
    QTest::newRow("helvetica") << u"\"Helvetica Neue\", Helvetica, Arial, sans-serif"_s;
    QTest::newRow("avenir") << u"\"Avenir Next\", Avenir, sans-serif"_s;
    QTest::newRow("gill-sans") << u"\"Gill Sans\", \"Gill Sans MT\", Calibri, sans-serif"_s;
    QTest::newRow("new-york") << u"\"New York\", Georgia, serif"_s;
    QTest::newRow("georgia") << u"Georgia, \"Times New Roman\", serif"_s;
    QTest::newRow("palatino") << u"Palatino, \"Palatino Linotype\", \"Book Antiqua\", serif"_s;
    QTest::newRow("baskerville") << u"Baskerville, \"Baskerville Old Face\", serif"_s;
    QTest::newRow("mono") << u"\"SF Mono\", ui-monospace, Menlo, \"Courier New\", monospace"_s;
    QTest::newRow("courier") << u"\"Courier New\", Courier, monospace"_s;
    QTest::newRow("comic") << system;
    QTest::newRow("") << system;
    QTest::newRow("System") << system;
}

void TypographyScriptTests::fontKeysGiveTheirStacks()
{
    TypographyTheme theme;
    theme.h4.fontFamilyKey = QString::fromUtf8(QTest::currentDataTag());

    QTEST(valueOf(u"--h4-font"_s, theme), "stack");
}

void TypographyScriptTests::boldWeightDependsOnTheLevel_data()
{
    QTest::addColumn<QString>("weight");

    QTest::newRow("body") << u"700"_s;
    QTest::newRow("list") << u"700"_s;
    QTest::newRow("h1") << u"800"_s;
    QTest::newRow("h2") << u"700"_s;
    QTest::newRow("h3") << u"700"_s;
    QTest::newRow("h4") << u"700"_s;
    QTest::newRow("h5") << u"600"_s;
}

void TypographyScriptTests::boldWeightDependsOnTheLevel()
{
    TypographyTheme theme;
    theme.body.bold = theme.list.bold = theme.h1.bold = theme.h2.bold = theme.h3.bold = true;
    theme.h4.bold = theme.h5.bold = true;
    const QString property = u"--"_s + QString::fromUtf8(QTest::currentDataTag()) + u"-weight"_s;

    QTEST(valueOf(property, theme), "weight");
    QCOMPARE(valueOf(property, TypographyTheme()), u"400"_s);
}

void TypographyScriptTests::looksAreWrittenAsCss()
{
    TypographyTheme theme = TypographyTheme::standard();
    theme.list.italic = theme.list.underline = theme.list.uppercase = true;

    QCOMPARE(valueOf(u"--list-style"_s, theme), u"italic"_s);
    QCOMPARE(valueOf(u"--list-decoration"_s, theme), u"underline"_s);
    QCOMPARE(valueOf(u"--list-transform"_s, theme), u"uppercase"_s);
    QCOMPARE(valueOf(u"--body-style"_s, theme), u"normal"_s);
}

void TypographyScriptTests::numbersAlwaysHaveAFraction_data()
{
    QTest::addColumn<double>("number");
    QTest::addColumn<QString>("text");

    QTest::newRow("12") << 12.0 << u"12.0"_s;
    QTest::newRow("1.4") << 1.4 << u"1.4"_s;
    QTest::newRow("1.15") << 1.15 << u"1.15"_s;
    QTest::newRow("0") << 0.0 << u"0.0"_s;
    QTest::newRow("13.5") << 13.5 << u"13.5"_s;
    QTest::newRow("2") << 2.0 << u"2.0"_s;
    QTest::newRow("a sum of tenths") << 0.1 + 0.2 << u"0.30000000000000004"_s;
    QTest::newRow("hundred thousand") << 100000.0 << u"100000.0"_s;
    QTest::newRow("negative") << -3.0 << u"-3.0"_s;
    QTest::newRow("small") << 0.00001 << u"0.00001"_s;
}

void TypographyScriptTests::numbersAlwaysHaveAFraction()
{
    QFETCH(const double, number);

    QTEST(decimalText(number), "text");
}

void TypographyScriptTests::anyNumberReadsBackTheSame_data()
{
    QTest::addColumn<double>("number");

    using Limits = std::numeric_limits<double>;
    QTest::newRow("largest") << Limits::max();
    QTest::newRow("lowest") << Limits::lowest();
    QTest::newRow("smallest normal") << Limits::min();
    QTest::newRow("below normal") << 2.2250738585072011e-308;
    QTest::newRow("negative and below normal") << -2.2250738585072011e-308;
    QTest::newRow("smallest of all") << Limits::denorm_min();
    QTest::newRow("third") << 1.0 / 3;
}

void TypographyScriptTests::anyNumberReadsBackTheSame()
{
    QFETCH(const double, number);
    const QString text = decimalText(number);

    QCOMPARE(text.toDouble(), number);
    QVERIFY(text.contains(u'.'));
    QVERIFY(!text.contains(u'e'));
}

void TypographyScriptTests::zoomScriptSetsTheZoomProperty()
{
    QCOMPARE(zoomScript(1), u"document.documentElement.style.setProperty('--editor-zoom','1.0')"_s);
    QCOMPARE(zoomScript(1.3), u"document.documentElement.style.setProperty('--editor-zoom','1.3')"_s);
}

QTEST_GUILESS_MAIN(TypographyScriptTests)
#include "TypographyScriptTests.moc"
