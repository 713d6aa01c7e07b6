#include "Editor/PageRequests.h"

#include "Editor/EditorScript.h"
#include "Editor/WebEditorController.h"

#include "State/AppState.h"
#include "Vault/NoteNames.h"

#include <QJsonObject>
#include <QMimeDatabase>
#include <QtConcurrent>
#include <QTemporaryDir>

#include <memory>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

/// What a picture may be long, in base64.
constexpr qsizetype longestPicture = 90 * 1024 * 1024;
constexpr qsizetype longestName = 120;

/// The name as one that a file can have anywhere: no folders, no control characters, not hidden.
QString safeName(const QString& name)
{
    QString safe;
    for (const QChar letter : name.section(u'/', -1).section(u'\\', -1)) {
        if (letter.isPrint() && !u"<>:\"|?*"_s.contains(letter))
            safe += letter;
    }
    while (safe.startsWith(u'.') || safe.startsWith(u' '))
        safe.remove(0, 1);
    return safe.right(longestName);
}

/// A picture in a folder that goes when nobody needs it any more.
struct WrittenPicture final
{
    QTemporaryDir folder;
    QString path;
};

/// The picture as a file of its own; nothing when the bytes are no picture, or the disk takes none.
std::shared_ptr<WrittenPicture> write(const ImageImport& image)
{
    const auto decoded =
        QByteArray::fromBase64Encoding(image.base64, QByteArray::AbortOnBase64DecodingErrors);
    const QMimeType type = QMimeDatabase().mimeTypeForFileNameAndData(image.name, decoded.decoded);
    if (!decoded || decoded.decoded.isEmpty() || !type.name().startsWith("image/"_L1))
        return nullptr;
    auto written = std::make_shared<WrittenPicture>();
    written->path = written->folder.filePath(image.name);
    QFile file(written->path);
    const bool isWritten = written->folder.isValid() && file.open(QIODevice::WriteOnly) &&
                           file.write(decoded.decoded) == decoded.decoded.size() && file.flush();
    return isWritten ? written : nullptr;
}

QString call(const QString& function, const QString& arguments)
{
    return u"window.VaultEditor."_s + function + u'(' + arguments + u')';
}

} // namespace

std::optional<ImageImport> imageImportFrom(const QJsonValue& body)
{
    const QJsonObject fields = body.toObject();
    const int id = fields[u"id"_s].toInt(0);
    const QString name = safeName(fields[u"name"_s].toString());
    const QString data = fields[u"data"_s].toString();
    if (id <= 0 || name.isEmpty() || data.isEmpty() || data.size() > longestPicture)
        return std::nullopt;
    return ImageImport{id, name, data.toLatin1()};
}

PageRequests::PageRequests(AppState& appState, WebEditorController& controller, QObject* parent)
    : QObject(parent)
    , m_appState(appState)
    , m_controller(controller)
{
    m_controller.setOnRequest([this](const QString& name, const QJsonValue& body) { receive(name, body); });
}

PageRequests::~PageRequests()
{
    m_controller.setOnRequest({});
}

void PageRequests::receive(const QString& name, const QJsonValue& body)
{
    if (name == "noteNames"_L1) {
        tellNoteNames();
    } else if (name == "importImage"_L1) {
        if (auto image = imageImportFrom(body))
            import(std::move(*image));
        else if (const int id = body[u"id"_s].toInt(0); id > 0)
            answer(id, std::nullopt);
    }
}

void PageRequests::tellNoteNames()
{
    const std::optional<FileURL> root = m_appState.vaultURL();
    if (!root || m_isCollecting)
        return;
    m_isCollecting = true;
    QtConcurrent::run([root = *root] {
        return namesOfNotes(root);
    }).then(this, [this, root](const QStringList& names) {
        m_isCollecting = false;
        if (m_appState.vaultURL() != root)
            return;
        QStringList literals;
        for (const QString& name : names)
            literals.append(jsString(name));
        m_controller.webView().evaluate(call(u"setNoteNames"_s, u'[' + literals.join(u',') + u']'));
    });
}

void PageRequests::import(ImageImport image)
{
    const int id = image.id;
    QtConcurrent::run([image = std::move(image)] {
        return write(image);
    }).then(this, [this, id](const std::shared_ptr<WrittenPicture>& written) {
        answer(id, written ? m_appState.importAsset(FileURL::file(written->path)) : std::nullopt);
    });
}

void PageRequests::answer(int id, const std::optional<QString>& path)
{
    const QString literal = path ? jsString(*path) : u"null"_s;
    m_controller.webView().evaluate(call(u"imageImported"_s, QString::number(id) + u", "_s + literal));
}

} // namespace wendlore
