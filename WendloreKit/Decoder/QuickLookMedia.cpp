#include "Decoder/QuickLookMedia.h"

#include "Decoder/OggTimes.h"

#include <QXmlStreamReader>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

enum class Medium { Audio, Video, Drawing, Font };

struct MediaType final
{
    Medium medium;
    QByteArray mimeType;
};

const QByteArray svgType = "image/svg+xml";

std::optional<MediaType> typeOf(const QString& extension)
{
    static const QHash<QString, MediaType> types{
        {u"mp3"_s, {Medium::Audio, "audio/mpeg"}},    {u"m4a"_s, {Medium::Audio, "audio/mp4"}},
        {u"aac"_s, {Medium::Audio, "audio/aac"}},     {u"ogg"_s, {Medium::Audio, "audio/ogg"}},
        {u"oga"_s, {Medium::Audio, "audio/ogg"}},     {u"opus"_s, {Medium::Audio, "audio/ogg"}},
        {u"flac"_s, {Medium::Audio, "audio/flac"}},   {u"wav"_s, {Medium::Audio, "audio/wav"}},
        {u"weba"_s, {Medium::Audio, "audio/webm"}},   {u"mp4"_s, {Medium::Video, "video/mp4"}},
        {u"m4v"_s, {Medium::Video, "video/mp4"}},     {u"mov"_s, {Medium::Video, "video/mp4"}},
        {u"webm"_s, {Medium::Video, "video/webm"}},   {u"ogv"_s, {Medium::Video, "video/ogg"}},
        {u"mkv"_s, {Medium::Video, "video/webm"}},    {u"svg"_s, {Medium::Drawing, svgType}},
        {u"avif"_s, {Medium::Drawing, "image/avif"}}, {u"ico"_s, {Medium::Drawing, "image/x-icon"}},
        {u"ttf"_s, {Medium::Font, "font/ttf"}},       {u"otf"_s, {Medium::Font, "font/otf"}},
        {u"woff"_s, {Medium::Font, "font/woff"}},     {u"woff2"_s, {Medium::Font, "font/woff2"}},
    };
    const auto found = types.constFind(extension);
    return found == types.constEnd() ? std::nullopt : std::optional(*found);
}

/// Whether the file begins like a font; the engine would show a specimen of another font otherwise.
bool isFont(QIODevice& file)
{
    constexpr std::array beginnings{QByteArrayView("\0\1\0\0", 4), QByteArrayView("OTTO"),
                                    QByteArrayView("true"), QByteArrayView("wOFF"), QByteArrayView("wOF2")};
    const QByteArray beginning = file.read(4);
    return std::ranges::any_of(beginnings, [&](QByteArrayView known) { return known == beginning; });
}

/// Whether the file is a whole drawing; the engine would show nothing of one that is not.
bool isSvg(QIODevice& file)
{
    QXmlStreamReader reader(&file);
    if (!reader.readNextStartElement() || reader.name() != u"svg")
        return false;
    while (!reader.atEnd())
        reader.readNext();
    return !reader.hasError();
}

bool isWhatItsNameSays(const QuickLookFile& file, const MediaType& type)
{
    if (!file.isOpen() || file.contents().size() == 0)
        return false;
    if (type.medium == Medium::Font)
        return isFont(file.contents());
    return type.mimeType != svgType || isSvg(file.contents());
}

/// How much of an Ogg file is changed: its sound begins there, also behind a cover.
constexpr qint64 changedBeginning = 8'000'000;

QByteArray specimenMarkup(const QString& name)
{
    QByteArray markup = "<style>@font-face{font-family:specimen;src:url(file)}</style><h1>" +
                        escaped(FileURL::file(name).nameWithoutExtension()) + "</h1><div class=\"specimen\">";
    const QByteArray letters = escaped(u"ABCDEFGHIJKLMNOPQRSTUVWXYZÅÄÖ\nabcdefghijklmnopqrstuvwxyzåäö\n"
                                       "0123456789 !?&%()[]{}@#*+-=/.,:;”»–"_s);
    markup += "<p style=\"font-size:30px\">" + QByteArray(letters).replace('\n', "<br>") + "</p>";
    for (const int size : {72, 48, 36, 24, 18, 14, 12}) {
        markup += "<p style=\"font-size:" + QByteArray::number(size) + "px\">" +
                  escaped(u"Flygande bäckasiner söka hwila på mjuka tuvor"_s) + "</p>";
    }
    return markup + "</div>";
}

} // namespace

std::optional<QuickLookPage> mediaPage(const QuickLookFile& file)
{
    const auto type = typeOf(file.extension());
    if (!type || !isWhatItsNameSays(file, *type))
        return std::nullopt;
    constexpr int specimenWidth = 900;
    QuickLookPage page;
    page.streamedType = type->mimeType;
    if (type->mimeType.endsWith("/ogg"))
        page.streamedBeginning = oggWithLaterSound(file.contents().read(changedBeginning));
    const QByteArray name = escaped(file.name());
    switch (type->medium) {
    case Medium::Audio:
        page.body = "<div class=\"centered\"><audio controls controlslist=\"nodownload noremoteplayback\" "
                    "src=\"file\" aria-label=\"" +
                    name + "\"></audio></div>";
        break;
    case Medium::Video:
        page.body = "<div class=\"centered\"><video controls controlslist=\"nodownload nofullscreen "
                    "noremoteplayback\" disablepictureinpicture src=\"file\" aria-label=\"" +
                    name + "\"></video></div>";
        break;
    case Medium::Drawing:
        page.body = "<div class=\"centered\"><img src=\"file\" alt=\"" + name + "\"></div>";
        break;
    case Medium::Font:
        page.body = specimenMarkup(file.name());
        page.width = specimenWidth;
        break;
    }
    return page;
}

} // namespace wendlore
