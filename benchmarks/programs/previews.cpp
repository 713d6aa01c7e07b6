// bench-previews ours|bare FILE says how long a file takes to show, and how long the window was kept from
// answering meanwhile at most (in time of the processor, of which other programs take none), in milliseconds;
// bench-previews make FOLDER makes the files. Ours is the product's own view, bare the least that shows the
// same with the toolkit. Both stand in a window of the same size, and the time ends when the window's pixels
// have what the file is known by: red in the middle, or for a log the first lines of its text. The editor's
// page is there before, as it is in the program, and a decoder waits, as it does there after the first file.
// A document of an office program is shown as one that was converted before.

#include "Editor/WebEditorController.h"
#include "Look/Colors.h"
#include "Look/Style.h"
#include "Platform/Desktop.h"
#include "Previews/DecoderProcess.h"
#include "Previews/FileViewer.h"
#include "Previews/QuickLookCache.h"
#include "Previews/WebSchemes.h"
#include "State/AppState.h"
#include "Support/LongestWork.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QImageReader>
#include <QLabel>
#include <QPageSize>
#include <QPainter>
#include <QPdfDocument>
#include <QPdfView>
#include <QPdfWriter>
#include <QPlainTextEdit>
#include <QRandomGenerator>
#include <QScreen>
#include <QTemporaryDir>
#include <QTimer>
#include <QVBoxLayout>
#include <QWebEngineView>

#include <algorithm>
#include <cstdio>

using namespace wendlore;

namespace {

constexpr QSize windowSize(1100, 800);
constexpr int lookEvery = 2; // ms
constexpr int patience = 60'000;
constexpr int timeToWait = 200; // ms; nobody chooses the next file sooner

void write(const QString& name, const QByteArray& bytes)
{
    QFile file(name);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write %s", qPrintable(name));
}

void makePdf(const QString& name)
{
    constexpr int pages = 500;
    constexpr int lines = 40;
    QPdfWriter writer(name);
    writer.setPageSize(QPageSize(QPageSize::A4));
    writer.setResolution(72);
    QPainter painter(&writer);
    for (int page = 1; page <= pages; ++page) {
        if (page == 1)
            painter.fillRect(QRect(0, 0, writer.width(), writer.height()), Qt::red);
        else
            writer.newPage();
        for (int line = 1; line <= lines; ++line)
            painter.drawText(20, 16 * line,
                             QStringLiteral("Sida %1, rad %2 av protokollet").arg(page).arg(line));
    }
}

/// A photograph as to its size and its grain: 24 megapixels.
void makeImage(const QString& name)
{
    QImage image(6000, 4000, QImage::Format_RGB32);
    QRandomGenerator random(1);
    for (int y = 0; y < image.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            const int grain = int(random.generate() & 7);
            line[x] = qRgb(x / 30 + grain, y / 20 + grain, 90 + grain);
        }
    }
    QPainter(&image).fillRect(2000, 1000, 2000, 2000, Qt::red);
    if (!image.save(name, "jpg", 90))
        qFatal("cannot write %s", qPrintable(name));
}

/// A page of 200 times 200 inches, all red.
QByteArray hugePage()
{
    return "%PDF-1.4\n1 0 obj<</Type/Catalog/Pages 2 0 R>>endobj\n"
           "2 0 obj<</Type/Pages/Kids[3 0 R]/Count 1>>endobj\n"
           "3 0 obj<</Type/Page/Parent 2 0 R/MediaBox[0 0 14400 14400]/Contents 4 0 R>>endobj\n"
           "4 0 obj<</Length 32>>stream\n1 0 0 rg 0 0 14400 14400 re f   \nendstream endobj\n"
           "trailer<</Root 1 0 R>>\n%%EOF\n";
}

/// A picture of 100 megapixels in a page: more than a page ever shows of it.
void makeHugePicture(const QString& name)
{
    constexpr int side = 10'000;
    const QByteArray pixels = qCompress(QByteArray("\xff\0\0", 3).repeated(qsizetype(side) * side), 1).mid(4);
    const QByteArray size = QByteArray::number(side);
    write(name,
          "%PDF-1.4\n1 0 obj<</Type/Catalog/Pages 2 0 R>>endobj\n"
          "2 0 obj<</Type/Pages/Kids[3 0 R]/Count 1>>endobj\n"
          "3 0 obj<</Type/Page/Parent 2 0 R/MediaBox[0 0 600 600]/Contents 4 0 R/Resources<</XObject<</P 5 0 "
          "R>>>>>>endobj\n4 0 obj<</Length 30>>stream\nq 600 0 0 600 0 0 cm /P Do Q  \nendstream endobj\n"
          "5 0 obj<</Type/XObject/Subtype/Image/Width " +
              size + "/Height " + size +
              "/BitsPerComponent 8/ColorSpace/DeviceRGB/Filter/FlateDecode/Length " +
              QByteArray::number(pixels.size()) + ">>stream\n" + pixels +
              "\nendstream endobj\ntrailer<</Root 1 0 R>>\n%%EOF\n");
}

int makeFiles(const QString& folder)
{
    write(folder + QStringLiteral("/stor-sida.pdf"), hugePage());
    makeHugePicture(folder + QStringLiteral("/stor-bild.pdf"));
    write(folder + QStringLiteral("/tabell.csv"),
          QByteArray("2024-05-17;Anna Berg;12,50;Kontorsmateriel och porto\n").repeated(100'000));
    makePdf(folder + QStringLiteral("/sidor.pdf"));
    makeImage(folder + QStringLiteral("/bild.jpg"));
    write(folder + QStringLiteral("/sida.html"),
          "<!doctype html><div style='background:red;height:100vh'></div>" +
              QByteArray("<p>Ett stycke med <b>fet</b> text och en <a href='x.html'>l&auml;nk</a>.</p>\n")
                  .repeated(70'000));
    write(folder + QStringLiteral("/logg.log"),
          QByteArray("2024-05-17 12:00:01.123 INFO  server[4711]: request /notes answered in 12 ms\n")
              .repeated(130'000));
    write(folder + QStringLiteral("/brev.docx"), "x");
    return 0;
}

QWidget* barePdf(const QString& file)
{
    auto* view = new QPdfView(nullptr);
    auto* document = new QPdfDocument(qApp); // the view has to go first
    view->setPageMode(QPdfView::PageMode::MultiPage);
    view->setZoomMode(QPdfView::ZoomMode::FitToWidth);
    view->setDocument(document);
    document->load(file);
    return view;
}

QWidget* bareImage(const QString& file)
{
    auto* view = new QLabel;
    view->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    view->setPixmap(QPixmap::fromImage(
        QImageReader(file).read().scaled(windowSize, Qt::KeepAspectRatio, Qt::SmoothTransformation)));
    return view;
}

QWidget* barePage(const QString& file)
{
    auto* view = new QWebEngineView;
    view->load(QUrl::fromLocalFile(file));
    return view;
}

QWidget* bareText(const QString& name)
{
    auto* view = new QPlainTextEdit;
    QFile file(name);
    if (file.open(QIODevice::ReadOnly))
        view->setPlainText(QString::fromUtf8(file.readAll()));
    return view;
}

QWidget* bare(const QString& file)
{
    if (file.endsWith(QStringLiteral(".pdf")))
        return barePdf(file);
    if (file.endsWith(QStringLiteral(".jpg")))
        return bareImage(file);
    return file.endsWith(QStringLiteral(".html")) ? barePage(file) : bareText(file);
}

QImage pixels(const QWidget& window, const QRect& area)
{
    return window.screen()
        ->grabWindow(window.winId(), area.x(), area.y(), area.width(), area.height())
        .toImage();
}

bool isRedInTheMiddle(const QWidget& window)
{
    const QColor middle =
        pixels(window, {windowSize.width() / 2, windowSize.height() / 2, 1, 1}).pixelColor(0, 0);
    return middle.red() > 200 && middle.green() < 60 && middle.blue() < 60;
}

/// Whether there is text in the upper left corner.
bool hasFirstLines(const QWidget& window)
{
    constexpr int enough = 100;
    const QImage corner = pixels(window, {10, 10, 300, 100});
    int ink = 0;
    for (int y = 0; y < corner.height(); ++y) {
        for (int x = 0; x < corner.width(); ++x)
            ink += corner.pixelColor(x, y).lightness() < 160;
    }
    return ink > enough;
}

/// Runs the event loop until `isDone`, which is asked every other millisecond.
template <typename Condition>
bool waitUntil(Condition isDone)
{
    QElapsedTimer time;
    time.start();
    QEventLoop loop;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &loop, [&] {
        if (isDone() || time.elapsed() > patience)
            loop.quit();
    });
    look.start(lookEvery);
    loop.exec();
    return time.elapsed() <= patience;
}

void keepConverted(const QString& document)
{
    QFile pages(QFileInfo(document).dir().filePath(QStringLiteral("sidor.pdf")));
    const QuickLookCache cache;
    if (!pages.open(QIODevice::ReadOnly) ||
        !cache.keep(cache.placeOf(FileURL::file(document), QStringLiteral("pdf")), pages.readAll()))
        qFatal("cannot keep the pages of %s", qPrintable(document));
}

void showEmpty(QWidget& window)
{
    window.setLayout(new QVBoxLayout);
    window.layout()->setContentsMargins(0, 0, 0, 0);
    window.resize(windowSize);
    window.show();
    QApplication::processEvents();
}

/// As in the program after a file that a decoder has read.
void letADecoderWait()
{
    static_cast<void>(DecoderProcess(memoryFile("x").get()).ask({}, QuickLookLimits()));
    QElapsedTimer time;
    time.start();
    waitUntil([&time] { return time.elapsed() > timeToWait; });
}

} // namespace

int main(int argc, char** argv)
{
    registerWendloreSchemes();
    QApplication application(argc, argv);
    QApplication::setStyle(new Style);
    QApplication::setPalette(Colors::of(ColorScheme::light).palette());
    const QStringList arguments = QApplication::arguments();
    if (arguments.value(1) == QStringLiteral("make"))
        return makeFiles(arguments.value(2));
    const bool isOurs = arguments.value(1) == QStringLiteral("ours");
    const QString file = arguments.value(2);
    const bool isText = file.endsWith(QStringLiteral(".log")) || file.endsWith(QStringLiteral(".csv"));

    const QTemporaryDir home;
    const auto folder = FileURL::directory(home.path());
    Desktop desktop({folder, folder, folder});
    AppState state(desktop.services());
    // The editor's page starts with the state, and in the program it is there long before a file is chosen.
    waitUntil([&state] { return state.editorController().isReady(); });
    if (file.endsWith(QStringLiteral(".docx")))
        keepConverted(file);
    if (isOurs)
        letADecoderWait();
    QWidget window;
    showEmpty(window);

    LongestWork work;
    QElapsedTimer time;
    time.start();
    window.layout()->addWidget(isOurs ? makeFileViewer(state, FileURL::file(file), &window) : bare(file));
    work.end();
    const bool isShown = waitUntil([&] { return isText ? hasFirstLines(window) : isRedInTheMiddle(window); });
    if (!isShown)
        return 1;
    std::printf("%.1f %.1f\n", double(time.nsecsElapsed()) / 1e6, work.milliseconds());
    return 0;
}
