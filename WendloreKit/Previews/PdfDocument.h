#pragma once

#include "Decoder/DecoderTask.h"
#include "Decoder/PdfParts.h"
#include "Previews/DecoderProcess.h"

#include "Vault/FileURL.h"

#include <QByteArray>
#include <QImage>
#include <QMutex>

namespace wendlore {

/// An open PDF file, which a process of its own reads and draws. All of it may take long and is meant for the
/// background; calls from several threads wait for each other. Where the process dies over a question there
/// is no answer to that one, and the next is answered by a new process.
class PdfDocument final
{
public:
    using State = PdfState;

    PdfDocument();
    ~PdfDocument();
    Q_DISABLE_COPY_MOVE(PdfDocument)

    /// Opens the document in `bytes`. `locked` when `password` does not open it.
    State open(const QByteArray& bytes, const QString& password);
    /// Opens the file itself, for one that cannot be read as a whole.
    State open(const FileURL& file, const QString& password);
    /// Ends what goes on, from any thread; there are no answers any more.
    void close() { m_limits.stop(); }

    /// The pages' sizes in points. What is not read yet is taken to be as large as the last that is: many
    /// pages take long, and nearly always all are alike.
    [[nodiscard]] QList<QSizeF> pageSizes();
    /// Reads the sizes of some more pages; false when no more can be read.
    [[nodiscard]] bool readPageSizes();
    /// The part `clip` of a page that is `whole` pixels large; null when it cannot be drawn.
    [[nodiscard]] QImage render(int page, QSize whole, const QRect& clip);
    /// All text of a page.
    [[nodiscard]] PdfText text(int page);
    /// The text between two points, which may lie on different pages.
    [[nodiscard]] QList<PdfMatch> textBetween(PdfPoint from, PdfPoint to, QString* text);
    /// Where `words` stand on a page, whatever their case and wherever the lines break.
    [[nodiscard]] QList<PdfMatch> find(int page, const QString& words);
    /// Where the areas of a page lead that can be clicked.
    [[nodiscard]] QList<PdfLink> links(int page);

private:
    State openFile(Descriptor file, const QString& password);
    [[nodiscard]] State start();
    void takeSizes(const QList<QSizeF>& sizes);
    [[nodiscard]] std::optional<QByteArray> ask(const QByteArray& question);

    QMutex m_mutex;
    QuickLookLimits m_limits;
    Descriptor m_file;
    QString m_password;
    QList<QSizeF> m_pages;
    /// So many of the pages have their own size there.
    qsizetype m_readSizes = 0;
    std::unique_ptr<DecoderProcess> m_process;
};

} // namespace wendlore
