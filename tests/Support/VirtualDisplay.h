#pragma once

#include <QPoint>
#include <QProcess>
#include <QRect>
#include <QRegularExpression>
#include <QStringList>

namespace wendlore {

/// A screen of its own, without a window manager, with a keyboard and a pointer that are played by xdotool.
class VirtualDisplay final
{
public:
    VirtualDisplay()
    {
        // Without its last client the server would start anew, and drop whoever comes just then.
        m_server.start(QStringLiteral("Xvfb"),
                       {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"),
                        QStringLiteral("0"), QStringLiteral("1280x900x24"), QStringLiteral("-nolisten"),
                        QStringLiteral("tcp"), QStringLiteral("-noreset")});
        if (m_server.waitForStarted() && m_server.waitForReadyRead())
            m_name = QLatin1Char(':') + QString::fromLatin1(m_server.readLine()).trimmed();
    }
    ~VirtualDisplay()
    {
        m_server.terminate();
        m_server.waitForFinished();
    }

    /// The display's name; empty when there is none.
    [[nodiscard]] const QString& name() const { return m_name; }

    /// What xdotool prints; empty when it fails.
    QString control(const QStringList& arguments) const
    {
        QProcess tool;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("DISPLAY"), m_name);
        tool.setProcessEnvironment(environment);
        tool.start(QStringLiteral("xdotool"), arguments);
        tool.waitForFinished();
        return QString::fromUtf8(tool.readAllStandardOutput()).trimmed();
    }
    /// The identifiers of the shown windows with exactly this title.
    [[nodiscard]] QStringList windows(const QString& title) const
    {
        // A search sees a title only as far as its first letter beyond Latin 1.
        QStringList found = control({QStringLiteral("search"), QStringLiteral("--onlyvisible"),
                                     QStringLiteral("--name"), QStringLiteral(".")})
                                .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        found.removeIf([&](const QString& window) {
            return control({QStringLiteral("getwindowname"), window}) != title;
        });
        return found;
    }
    /// Brings a window to the front, for the pointer and the keyboard.
    void focus(const QString& window) const
    {
        control({QStringLiteral("windowraise"), window, QStringLiteral("windowfocus"), window});
    }
    void press(const QString& keys) const
    {
        control({QStringLiteral("key"), QStringLiteral("--clearmodifiers"), keys});
    }
    void type(const QString& text) const
    {
        control({QStringLiteral("type"), QStringLiteral("--delay"), QStringLiteral("20"), text});
    }
    enum class Button { left = 1, right = 3 };
    void click(const QPoint& place, Button button = Button::left) const
    {
        control(moveTo(place) + QStringList{QStringLiteral("click"), QString::number(int(button))});
    }
    /// Moves the pointer with its left button held down, by steps as a hand does.
    void drag(const QPoint& from, const QPoint& to) const
    {
        constexpr int steps = 6;
        control(moveTo(from) + QStringList{QStringLiteral("mousedown"), QStringLiteral("1")});
        for (int step = 1; step <= steps; ++step)
            control(moveTo(from + (to - from) * step / steps));
        control({QStringLiteral("mouseup"), QStringLiteral("1")});
    }
    [[nodiscard]] QRect placeOf(const QString& window) const
    {
        static const QRegularExpression pattern(
            QStringLiteral("X=(-?\\d+)\\s+Y=(-?\\d+)\\s+WIDTH=(\\d+)\\s+HEIGHT=(\\d+)"));
        const auto match =
            pattern.match(control({QStringLiteral("getwindowgeometry"), QStringLiteral("--shell"), window}));
        return {match.captured(1).toInt(), match.captured(2).toInt(), match.captured(3).toInt(),
                match.captured(4).toInt()};
    }

private:
    [[nodiscard]] static QStringList moveTo(const QPoint& place)
    {
        return {QStringLiteral("mousemove"), QString::number(place.x()), QString::number(place.y())};
    }

    QProcess m_server;
    QString m_name;
};

} // namespace wendlore
