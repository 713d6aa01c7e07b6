#include "Decoder/HeifPicture.h"

#include "Decoder/Picture.h"

#include <QColorSpace>

#include <libheif/heif.h>

#include <algorithm>
#include <array>
#include <memory>

namespace wendlore {

namespace {

template <auto Free>
struct Release final
{
    template <typename Object>
    void operator()(Object* object) const
    {
        Free(object);
    }
};

using Context = std::unique_ptr<heif_context, Release<heif_context_free>>;
using Handle = std::unique_ptr<heif_image_handle, Release<heif_image_handle_release>>;
using Picture = std::unique_ptr<heif_image, Release<heif_image_release>>;

Handle primaryImage(heif_context& context)
{
    heif_image_handle* handle = nullptr;
    heif_context_get_primary_image_handle(&context, &handle);
    return Handle(handle);
}

QColorSpace colorSpaceOf(const heif_image_handle& image)
{
    const size_t size = heif_image_handle_get_raw_color_profile_size(&image);
    if (size == 0)
        return {};
    QByteArray profile(qsizetype(size), Qt::Uninitialized);
    const heif_error error = heif_image_handle_get_raw_color_profile(&image, profile.data());
    return error.code == heif_error_Ok ? QColorSpace::fromIccProfile(profile) : QColorSpace();
}

} // namespace

bool isHeif(const QByteArray& bytes)
{
    // What the file is, and what it can be read as, in the box that it begins with.
    constexpr std::array brands{"heic", "heix", "heim", "heis", "hevc",
                                "hevx", "mif1", "msf1", "avif", "avis"};
    constexpr qsizetype brandSize = 4;
    constexpr qsizetype firstBrand = 8;
    constexpr qsizetype mostBrands = 64;
    if (bytes.mid(brandSize, brandSize) != "ftyp")
        return false;
    for (qsizetype at = firstBrand; at + brandSize <= std::min(bytes.size(), mostBrands); at += brandSize) {
        const QByteArray brand = bytes.mid(at, brandSize);
        if (std::ranges::any_of(brands, [&brand](const char* known) { return brand == known; }))
            return true;
    }
    return false;
}

QImage heifPicture(const QByteArray& bytes, qint64 limit)
{
    const Context context(heif_context_alloc());
    const heif_error read = heif_context_read_from_memory_without_copy(context.get(), bytes.constData(),
                                                                       size_t(bytes.size()), nullptr);
    if (read.code != heif_error_Ok)
        return {};
    const Handle handle = primaryImage(*context);
    if (!handle)
        return {};
    const qint64 pixels =
        qint64(heif_image_handle_get_width(handle.get())) * heif_image_handle_get_height(handle.get());
    if (pixels <= 0 || pixels > limit / bytesPerPixel)
        return {};

    heif_image* decoded = nullptr;
    const heif_error error =
        heif_decode_image(handle.get(), &decoded, heif_colorspace_RGB, heif_chroma_interleaved_RGBA, nullptr);
    const Picture picture(decoded);
    if (error.code != heif_error_Ok)
        return {};
    int stride = 0;
    const uint8_t* plane = heif_image_get_plane_readonly(picture.get(), heif_channel_interleaved, &stride);
    const QSize size(heif_image_get_width(picture.get(), heif_channel_interleaved),
                     heif_image_get_height(picture.get(), heif_channel_interleaved));
    if (!plane || size.isEmpty())
        return {};
    const bool hasAlpha = heif_image_handle_has_alpha_channel(handle.get()) != 0;
    QImage image = QImage(plane, size.width(), size.height(), stride,
                          hasAlpha ? QImage::Format_RGBA8888 : QImage::Format_RGBX8888)
                       .copy();
    image.setColorSpace(colorSpaceOf(*handle));
    return image;
}

} // namespace wendlore
