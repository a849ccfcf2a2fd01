#include "review/ui/JpegImage.h"

#include "media/RGBImage.h"
#include "support/FaultyFileSystem.h"
#include "support/screens/Screen.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <latch>

namespace corvane::test {
namespace {

constexpr auto kThumbnails = R"(
    import QtQuick
    import Corvane.Review
    Row {
        id: row
        property string first
        property string second
        property string fallback
        property string root
        property bool shown: true
        spacing: 20
        Loader {
            active: row.shown
            sourceComponent: VideoThumbnail {
                objectName: "first"
                primaryURL: row.first
                fallbackURL: row.fallback
                root: row.root
            }
        }
        VideoThumbnail { objectName: "second"; primaryURL: row.second }
    })";

/// An image with three vertical stripes: black, the given colour, black.
QByteArray stripes(QColor middle, int width = 640, int height = 180) {
    media::RGBImage image{.width = width, .height = height, .pixels = {}};
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const bool inMiddle = x >= width / 4 && x < width - width / 4;
            const QColor colour = inMiddle ? middle : QColor(Qt::black);
            image.pixels.append(char(colour.red()));
            image.pixels.append(char(colour.green()));
            image.pixels.append(char(colour.blue()));
        }
    }
    return image.encodedJPEG(0.9);
}

/// The file with other dimensions in its frame header.
QByteArray claiming(QByteArray jpeg, quint16 side) {
    const qsizetype frame = jpeg.indexOf("\xff\xc0");
    for (const qsizetype offset : {frame + 5, frame + 7}) {
        jpeg[offset] = char(side >> 8);
        jpeg[offset + 1] = char(side & 0xff);
    }
    return jpeg;
}

class JpegImageTest : public testing::Test {
  protected:
    bool isLoaded(const char *name) { return screen.property(name, "isLoaded").toBool(); }
    void show(const char *property, const QString &path) {
        screen.root()->setProperty(property, path);
    }
    /// Files are read in order, so this waits for all earlier requests.
    bool reloadsSecond() {
        show("second", {});
        show("second", folder.at("good.jpg"));
        return screen.waitFor([this] { return isLoaded("second"); });
    }
    static bool isLike(QColor colour, QColor wanted) {
        return qAbs(colour.red() - wanted.red()) < 40 &&
               qAbs(colour.green() - wanted.green()) < 40 &&
               qAbs(colour.blue() - wanted.blue()) < 40;
    }
    bool firstIs(QColor wanted) { return isLike(screen.picture().pixelColor(40, 22), wanted); }

    TestFolder folder;
    QString good = folder.write("good.jpg", stripes(Qt::red));
    Screen screen{kThumbnails, {300, 60}};
};

} // namespace

TEST_F(JpegImageTest, CropsToItsSizeWithRoundCornersAndKeepsNoMorePixels) {
    show("first", good);
    ASSERT_TRUE(screen.waitFor([this] { return isLoaded("first"); }));
    EXPECT_EQ(HeldImage::totalBytes(), 80 * 45 * 4);
    const QImage picture = screen.picture();
    EXPECT_TRUE(isLike(picture.pixelColor(3, 22), Qt::red)) << "cropped on both sides";
    EXPECT_TRUE(isLike(picture.pixelColor(76, 22), Qt::red));
    EXPECT_FALSE(isLike(picture.pixelColor(0, 0), Qt::red)) << "a corner is round";

    screen.item("first")->setSize({160, 45});
    EXPECT_TRUE(screen.waitFor([] { return HeldImage::totalBytes() == 160 * 45 * 4; }));
    EXPECT_TRUE(isLike(screen.picture().pixelColor(3, 22), Qt::black)) << "not cropped any more";

    show("first", {});
    EXPECT_FALSE(isLoaded("first"));
    EXPECT_EQ(HeldImage::totalBytes(), 0);
}

TEST_F(JpegImageTest, ShowsAGlyphForAnInvalidFileWithoutBlockingOnIt) {
    const QString fifo = folder.at("fifo.jpg");
    ASSERT_EQ(::mkfifo(qPrintable(fifo), 0600), 0);
    const QByteArray whole = folder.read("good.jpg");
    const QStringList bad{
        folder.at("missing.jpg"),
        folder.folder("folder.jpg"),
        fifo,
        folder.link("link.jpg", good),
        folder.write("empty.jpg", {}),
        folder.write("text.jpg", "no picture"),
        folder.write("half.jpg", whole.first(whole.size() / 2)),
        folder.write("vast.jpg", claiming(whole, 65000)),
        folder.write("long.jpg", whole + QByteArray(jpeg::kMaxFileBytes, 'x')),
        QStringLiteral("/dev/zero"),
        QString::fromLatin1("/no\0path", 8),
    };
    for (const QString &path : bad) {
        show("first", path);
        ASSERT_TRUE(reloadsSecond());
        EXPECT_FALSE(isLoaded("first")) << path.toStdString();
    }
    folder.write("other/good.jpg", whole);
    show("root", folder.path());
    show("first", folder.link("linked", folder.at("other")) + QStringLiteral("/good.jpg"));
    ASSERT_TRUE(reloadsSecond());
    EXPECT_FALSE(isLoaded("first")) << "a link below the root";
    show("first", folder.at("other/good.jpg"));
    EXPECT_TRUE(screen.waitFor([this] { return isLoaded("first"); }));
}

TEST_F(JpegImageTest, UsesTheFallbackWithoutAFileAndReadsAgainWhenRecreated) {
    const QString own = folder.at("own.jpg");
    show("fallback", good);
    show("first", own);
    EXPECT_TRUE(screen.waitFor([this] { return firstIs(Qt::red); }));
    folder.write("own.jpg", stripes(Qt::green));
    screen.root()->setProperty("shown", false);
    screen.root()->setProperty("shown", true);
    EXPECT_TRUE(screen.waitFor([this] { return firstIs(Qt::green); }));

    folder.write("broken.jpg", "no picture");
    show("first", folder.at("broken.jpg"));
    ASSERT_TRUE(reloadsSecond());
    EXPECT_FALSE(isLoaded("first")) << "the file exists";
}

TEST_F(JpegImageTest, DiscardsImagesOfFormerPaths) {
    std::latch isReading(1);
    std::latch mayGoOn(1);
    const QString slow = folder.write("slow.jpg", stripes(Qt::blue));
    FaultyFileSystem files;
    files.setObserver([&](const QString &operation, const QString &path) {
        if (operation == QStringLiteral("openForReading") && path == slow) {
            isReading.count_down();
            mayGoOn.wait();
        }
    });
    const FileSystemScope scope(files);
    show("first", slow);
    ASSERT_TRUE(screen.waitFor([&] { return isReading.try_wait(); }));
    show("first", good);
    mayGoOn.count_down();
    ASSERT_TRUE(screen.waitFor([this] { return isLoaded("first"); }));
    EXPECT_TRUE(firstIs(Qt::red)) << "only the requested image is shown";

    show("first", slow); // replaced before it is read
    screen.root()->setProperty("shown", false);
    ASSERT_TRUE(reloadsSecond());
    EXPECT_EQ(HeldImage::totalBytes(), 80 * 45 * 4) << "only the second image";
}

} // namespace corvane::test
