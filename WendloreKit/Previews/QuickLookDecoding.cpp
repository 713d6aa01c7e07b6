#include "Previews/QuickLookDecoding.h"

#include "Decoder/DecoderTask.h"
#include "Previews/DecoderProcess.h"

#include "Vault/ReadFile.h"

namespace wendlore {

namespace {

using namespace std::chrono_literals;

/// What the process has to send what it found, when it has taken all of its time.
constexpr auto timeToAnswer = 2s;

/// Empty when there is no answer.
QByteArray ask(const FileURL& url, DecoderTask task, const QuickLookLimits& limits)
{
    const Descriptor file = openRegularFile(url);
    if (!file.isOpen())
        return {};
    DecoderProcess process(file.get());
    const auto time = limits.remainingTime();
    return process
        .ask(decoderValues(task, url.lastPathComponent(), qint64(time.count())),
             limits.withTime(time + timeToAnswer))
        .value_or(QByteArray());
}

std::optional<QuickLookPage> pageIn(const QByteArray& answer, const FileURL& file)
{
    QuickLookPage page;
    if (!readAnswer(answer, page))
        return std::nullopt;
    if (!page.streamedType.isEmpty())
        page.streamed = file;
    return page;
}

} // namespace

std::optional<QuickLookPage> decodeFilePreview(const FileURL& file, const QuickLookLimits& limits)
{
    return pageIn(ask(file, DecoderTask::previewFile, limits), file);
}

std::optional<QuickLookPage> decodeDocumentPreview(const FileURL& file, const QuickLookLimits& limits)
{
    return pageIn(ask(file, DecoderTask::previewDocument, limits), file);
}

QByteArray decodeDocumentPages(const FileURL& file, const QuickLookLimits& limits)
{
    QByteArray pages;
    return readAnswer(ask(file, DecoderTask::pagesOfDocument, limits), pages) ? pages : QByteArray();
}

} // namespace wendlore
