#include "Previews/PdfDocument.h"

#include "Vault/ReadFile.h"

#include <algorithm>

namespace wendlore {

namespace {

/// No more are shown, whatever a file says.
constexpr int mostPages = 100'000;

} // namespace

PdfDocument::PdfDocument()
    : m_file(FileSystemCalls::real())
{}

PdfDocument::~PdfDocument() = default;

PdfDocument::State PdfDocument::open(const QByteArray& bytes, const QString& password)
{
    return openFile(memoryFile(bytes), password);
}

PdfDocument::State PdfDocument::open(const FileURL& file, const QString& password)
{
    return openFile(openRegularFile(file), password);
}

PdfDocument::State PdfDocument::openFile(Descriptor file, const QString& password)
{
    const QMutexLocker locker(&m_mutex);
    m_process.reset();
    m_pages.clear();
    m_readSizes = 0;
    m_file = std::move(file);
    m_password = password;
    return m_file.isOpen() && !m_limits.isStopped() ? start() : State::damaged;
}

PdfDocument::State PdfDocument::start()
{
    m_process = std::make_unique<DecoderProcess>(m_file.get());
    const auto answer = m_process->ask(decoderValues(DecoderTask::openPdf, m_password),
                                       m_limits.withTime(maximumDecodingTime()));
    auto state = State::damaged;
    int count = 0;
    QList<QSizeF> sizes;
    if (!answer || !readAnswer(*answer, state, count, sizes))
        return State::damaged;
    if (m_pages.isEmpty()) {
        m_pages.resize(std::clamp(count, 0, mostPages));
        takeSizes(sizes);
    }
    return state;
}

void PdfDocument::takeSizes(const QList<QSizeF>& sizes)
{
    const qsizetype count = std::min(sizes.size(), m_pages.size() - m_readSizes);
    if (count == 0)
        return;
    const auto beyond = std::copy_n(sizes.begin(), count, m_pages.begin() + m_readSizes);
    std::fill(beyond, m_pages.end(), sizes.at(count - 1));
    m_readSizes += count;
}

std::optional<QByteArray> PdfDocument::ask(const QByteArray& question)
{
    if (m_limits.isStopped() || (!m_process && start() != State::ready))
        return std::nullopt;
    auto answer = m_process->ask(question, m_limits.withTime(maximumDecodingTime()));
    if (!answer)
        m_process.reset();
    return answer;
}

QList<QSizeF> PdfDocument::pageSizes()
{
    const QMutexLocker locker(&m_mutex);
    return m_pages;
}

bool PdfDocument::readPageSizes()
{
    const QMutexLocker locker(&m_mutex);
    if (m_readSizes == m_pages.size())
        return false;
    QList<QSizeF> sizes;
    const auto answer = ask(decoderValues(DecoderTask::sizesOfPages, int(m_readSizes)));
    if (!answer || !readAnswer(*answer, sizes) || sizes.isEmpty())
        return false;
    takeSizes(sizes);
    return true;
}

QImage PdfDocument::render(int page, QSize whole, const QRect& clip)
{
    const QMutexLocker locker(&m_mutex);
    const auto answer = ask(decoderValues(DecoderTask::drawPage, page, whole, clip));
    QSize size;
    bool hasAlpha = false;
    return answer && readAnswer(*answer, size, hasAlpha) ? m_process->picture(size, hasAlpha).copy()
                                                         : QImage();
}

PdfText PdfDocument::text(int page)
{
    const QMutexLocker locker(&m_mutex);
    PdfText text;
    const auto answer = ask(decoderValues(DecoderTask::textOfPage, page));
    return answer && readAnswer(*answer, text) ? text : PdfText();
}

QList<PdfMatch> PdfDocument::textBetween(PdfPoint from, PdfPoint to, QString* text)
{
    const QMutexLocker locker(&m_mutex);
    QList<PdfMatch> parts;
    const auto answer = ask(decoderValues(DecoderTask::textBetween, from, to));
    return answer && readAnswer(*answer, *text, parts) ? parts : QList<PdfMatch>();
}

QList<PdfMatch> PdfDocument::find(int page, const QString& words)
{
    const QMutexLocker locker(&m_mutex);
    QList<PdfMatch> matches;
    const auto answer = ask(decoderValues(DecoderTask::findText, page, words));
    return answer && readAnswer(*answer, matches) ? matches : QList<PdfMatch>();
}

QList<PdfLink> PdfDocument::links(int page)
{
    const QMutexLocker locker(&m_mutex);
    QList<PdfLink> links;
    const auto answer = ask(decoderValues(DecoderTask::linksOfPage, page));
    return answer && readAnswer(*answer, links) ? links : QList<PdfLink>();
}

} // namespace wendlore
