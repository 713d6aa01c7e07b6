// A small host program: its window shows one bucket. Names of files that are written to its standard input,
// one on a line and relative to the bucket, are revealed; every file that gets selected is written to its
// standard output. It ends with its input, or when its window is closed.

#include "Look/Colors.h"
#include "Look/Fonts.h"
#include "Look/Style.h"
#include "Platform/Desktop.h"
#include "Previews/WebSchemes.h"
#include "Shell/WendloreView.h"

#include <QApplication>
#include <QDir>
#include <QMainWindow>
#include <QSocketNotifier>
#include <QStandardPaths>
#include <QStatusBar>

#include <array>
#include <cstdio>
#include <unistd.h>

using namespace wendlore;

namespace {

/// Everything of this host's own lies in one folder, apart from what other programs have.
ProgramFolders foldersOfHost()
{
    const auto folder =
        FileURL::directory(QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation));
    return {folder, folder, folder};
}

void tell(const QDir& bucket, QStatusBar& status, const std::optional<FileURL>& file)
{
    const QString name = file ? bucket.relativeFilePath(file->path()) : QStringLiteral("-");
    status.showMessage(name);
    std::puts(qUtf8Printable(name));
    std::fflush(stdout);
}

/// The names that come in on standard input.
class Requests final
{
public:
    /// The names that have arrived whole since the last call; nothing at the end of the input.
    [[nodiscard]] std::optional<QStringList> read()
    {
        std::array<char, 4096> bytes{};
        const ssize_t count = ::read(STDIN_FILENO, bytes.data(), bytes.size());
        if (count <= 0)
            return std::nullopt;
        m_bytes.append(bytes.data(), count);
        QStringList names;
        for (qsizetype end = m_bytes.indexOf('\n'); end >= 0; end = m_bytes.indexOf('\n')) {
            names.append(QString::fromUtf8(m_bytes.left(end)));
            m_bytes.remove(0, end + 1);
        }
        return names;
    }
    /// Differs from request to request, so that one file can be asked for twice.
    [[nodiscard]] int nextToken() { return ++m_token; }

private:
    QByteArray m_bytes;
    int m_token = 0;
};

} // namespace

int main(int argc, char** argv)
{
    registerWendloreSchemes(); // has to come before the application object
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("embedding"));
    QApplication::setStyle(new Style);
    QApplication::setFont(interfaceFont());
    QApplication::setPalette(Colors::of(ColorScheme::light).palette());
    const QDir bucket(QCoreApplication::arguments().value(1));
    if (argc != 2 || !bucket.exists()) {
        std::fputs("Usage: embedding FOLDER\n", stderr);
        return 2;
    }

    Desktop desktop(foldersOfHost());
    QMainWindow window;
    const auto root = FileURL::directory(bucket.canonicalPath());
    WendloreView::Options options;
    options.inlineFileToolbar = true;
    options.onSelectedFileChange = [&](const std::optional<FileURL>& file) {
        tell(QDir(root.path()), *window.statusBar(), file);
    };
    auto* view = new WendloreView(desktop.services(), root, options, &window);
    window.setCentralWidget(view);
    window.resize(1000, 700);
    window.show();

    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    Requests requests;
    QObject::connect(&input, &QSocketNotifier::activated, view, [&] {
        const auto names = requests.read();
        input.setEnabled(names.has_value());
        if (!names)
            window.close();
        for (const QString& name : names.value_or(QStringList()))
            view->setReveal(RevealRequest{root.appending(name), requests.nextToken()});
    });
    return QApplication::exec();
}
