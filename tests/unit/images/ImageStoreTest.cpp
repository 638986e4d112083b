#include "platform/images/ImageStore.h"

#include "platform/dispatch/VirtualDispatcher.h"
#include "tests/fakes/Pictures.h"

#include <QColorSpace>
#include <gmock/gmock.h>

namespace tarnwick::images {
namespace {

using dispatch::QualityOfService;

QImage gradient(QSize size, QImage::Format format = QImage::Format_RGB32) {
    QImage picture(size, QImage::Format_ARGB32);
    for (int y = 0; y < size.height(); ++y)
        for (int x = 0; x < size.width(); ++x)
            picture.setPixelColor(x, y, QColor(x * 255 / size.width(), y * 255 / size.height(), 90));
    return picture.convertToFormat(format);
}

class ImageStoreTest : public testing::Test {
protected:
    /// As a loader does it: off the main thread.
    std::optional<Image> load(const QByteArray& bytes) {
        std::optional<Image> image;
        dispatcher.runAndWait(QualityOfService::Background, [&] { image = store.decode(bytes); });
        return image;
    }

    dispatch::VirtualDispatcher dispatcher;
    ImageStore store{dispatcher};
};

TEST_F(ImageStoreTest, ReadsEveryFormat) {
    for (const char* format : {"png", "jpeg", "webp", "bmp", "tiff"}) {
        const auto image = load(encoded(gradient({64, 48}), format, 100));
        ASSERT_TRUE(image) << format;
        EXPECT_EQ(image->size(), QSize(64, 48)) << format;
        const QImage pixels = image->pixels();
        EXPECT_EQ(pixels.format(), QImage::Format_RGBA8888);
        EXPECT_EQ(pixels.bytesPerLine(), 64 * 4);
        EXPECT_NEAR(pixels.pixelColor(32, 24).red(), 127, 6) << format;
    }
    const QByteArray gif =
        QByteArray::fromBase64("R0lGODlhAgABAIAAAP8AAAAA/yH5BAAKAAAALAAAAAACAAEAAAICRAoAOw==");
    const auto first = load(gif);
    ASSERT_TRUE(first);
    EXPECT_EQ(first->pixels().pixelColor(0, 0), QColor(Qt::red));
}

TEST_F(ImageStoreTest, EqualBytesAreTheSameHandle) {
    const QByteArray bytes = encoded(gradient({32, 32}));
    const auto first = load(bytes);
    const QByteArray copy(bytes.constData(), bytes.size());
    EXPECT_EQ(load(copy), first);
    EXPECT_EQ(store.decode(bytes), first) << "on the main thread too";
    EXPECT_NE(load(encoded(gradient({33, 32}))), first);
    EXPECT_EQ(store.decodeCount(), 2);
}

TEST_F(ImageStoreTest, BrokenBytesGiveNone) {
    const QByteArray png = encoded(gradient({200, 200}));
    QByteArray hugeHeader = png;
    hugeHeader.replace(16, 8, QByteArray::fromHex("0001000000010000")); // says 65,536 x 65,536
    const struct {
        const char* what;
        QByteArray bytes;
    } rows[] = {
        {"nothing", {}},
        {"text", "no picture at all"},
        {"half a PNG", png.left(png.size() / 2)},
        {"a vector picture", "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'/>"},
        {"too many pixels", hugeHeader},
        {"too many bytes", png + QByteArray(ImageStore::maximumBytes, ' ')},
    };
    for (const auto& row : rows)
        for (int attempt = 0; attempt < 2; ++attempt)
            EXPECT_FALSE(load(row.bytes)) << row.what << ", attempt " << attempt;
}

TEST_F(ImageStoreTest, OnTheMainThreadTheSizeComesFirstAndThePixelsLater) {
    const auto image = store.decode(encoded(gradient({64, 48}), "jpeg"));
    ASSERT_TRUE(image);
    EXPECT_EQ(image->size(), QSize(64, 48));
    EXPECT_FALSE(image->isReady());
    dispatcher.runUntilIdle();
    EXPECT_TRUE(image->isReady());
}

TEST_F(ImageStoreTest, NormalisesDepthPaletteAlphaAndColourSpace) {
    QImage wide = gradient({16, 16}, QImage::Format_RGB32);
    wide.setColorSpace(QColorSpace::DisplayP3);
    const QImage alpha = plainPicture(QColor(200, 100, 50, 128), {16, 16}, QImage::Format_ARGB32);
    for (const QImage& picture :
         {gradient({16, 16}, QImage::Format_RGBA64), gradient({16, 16}, QImage::Format_Indexed8),
          gradient({15, 16}, QImage::Format_Grayscale8), wide, alpha}) {
        const auto image = load(encoded(picture));
        ASSERT_TRUE(image);
        EXPECT_EQ(image->pixels().format(), QImage::Format_RGBA8888);
        EXPECT_EQ(image->pixels().bytesPerLine(), picture.width() * 4);
    }
    EXPECT_EQ(load(encoded(alpha))->pixels().pixelColor(3, 3), QColor(200, 100, 50, 128));
    const QColor before = wide.pixelColor(12, 4), after = load(encoded(wide))->pixels().pixelColor(12, 4);
    EXPECT_GT(after.red(), before.red()) << "a wide-gamut red is a stronger sRGB red";
}

} // namespace
} // namespace tarnwick::images
