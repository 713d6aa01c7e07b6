// The least that shows a local page in a window of its own: bench-bare FILE. What our own start is measured
// against.

#include <QApplication>
#include <QUrl>
#include <QWebEngineView>

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    QWebEngineView view;
    view.resize(1100, 800);
    view.load(QUrl::fromLocalFile(application.arguments().at(1)));
    view.show();
    return QApplication::exec();
}
