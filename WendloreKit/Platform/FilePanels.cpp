#include "Platform/FilePanels.h"

#include "Platform/VaultLocationAccessory.h"

#include "Vault/DiskEntry.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QHeaderView>
#include <QSplitter>
#include <QStandardPaths>
#include <QTreeView>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

/// Wide enough for names and dates.
constexpr QSize size(760, 500);
constexpr int placesWidth = 150;

void setTexts(QFileDialog& dialog, const QString& prompt, const QString& message)
{
    dialog.setWindowTitle(message);
    dialog.setLabelText(QFileDialog::Accept, prompt);
    dialog.setLabelText(QFileDialog::Reject, u"Avbryt"_s);
    dialog.setLabelText(QFileDialog::LookIn, u"Sök i:"_s);
    dialog.setLabelText(QFileDialog::FileName, u"Namn:"_s);
    dialog.setLabelText(QFileDialog::FileType, u"Filtyp:"_s);
}

/// Adds the menu of cloud folders, where there are any; only Qt's own form of the dialog has room for it.
void addCloudLocations(QFileDialog& dialog)
{
    std::vector<CloudLocation> locations = CloudLocations::available();
    if (locations.empty())
        return;
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    if (auto* grid = qobject_cast<QGridLayout*>(dialog.layout()))
        grid->addWidget(new VaultLocationAccessory(std::move(locations), &dialog), grid->rowCount(), 0, 1,
                        -1);
}

/// Where the user looked last, else at home rather than where the program happened to be started.
void startAtHome(QFileDialog& dialog)
{
    if (dialog.directory() == QDir::current())
        dialog.setDirectory(QDir::homePath());
}

/// Gives places, kinds, sizes and dates the room that they need and names all the rest; only Qt's own form of
/// the dialog has these columns.
void setColumns(const QFileDialog& dialog)
{
    auto* const panes = dialog.findChild<QSplitter*>(u"splitter"_s);
    auto* const files = dialog.findChild<QTreeView*>(u"treeView"_s);
    if (!panes || !files)
        return;
    panes->setSizes({placesWidth, size.width() - placesWidth});
    files->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    files->header()->setSectionResizeMode(0, QHeaderView::Stretch);
}

/// One filter for all patterns, however the files' names are written.
QString filterOf(const QStringList& patterns)
{
    QStringList spellings;
    for (const QString& pattern : patterns)
        spellings << pattern << pattern.toUpper();
    return u"Passande filer (%1)"_s.arg(spellings.join(u' '));
}

/// Shows the dialog until the user has chosen; nothing when there is nothing of that kind at the chosen
/// place.
std::optional<FileURL> choose(QFileDialog& dialog, DiskEntry kind)
{
    dialog.resize(size);
    setColumns(dialog);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return std::nullopt;
    const QByteArray path = QFile::encodeName(dialog.selectedFiles().constFirst());
    const auto chosen = FileURL::fromBytes(path, kind == DiskEntry::Folder);
    return diskEntry(chosen) == kind ? std::optional(chosen) : std::nullopt;
}

} // namespace

std::optional<FileURL> FilePanels::chooseFolder(const QString& prompt, const QString& message)
{
    QFileDialog dialog(QApplication::activeWindow());
    startAtHome(dialog);
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    addCloudLocations(dialog);
    setTexts(dialog, prompt, message);
    return choose(dialog, DiskEntry::Folder);
}

std::optional<FileURL> FilePanels::chooseFile(const QString& prompt, const QString& message,
                                              const QStringList& patterns, Start start)
{
    QFileDialog dialog(QApplication::activeWindow());
    const QString pictures = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
    startAtHome(dialog);
    if (start == Start::pictures && QFileInfo(pictures).isDir())
        dialog.setDirectory(pictures);
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.setNameFilter(filterOf(patterns));
    dialog.setOption(QFileDialog::HideNameFilterDetails);
    setTexts(dialog, prompt, message);
    return choose(dialog, DiskEntry::File);
}

} // namespace wendlore
