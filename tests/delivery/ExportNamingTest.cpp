#include "delivery/ExportNaming.h"

#include "delivery/DeliveryFixture.h"
#include "platform/Paths.h"
#include "transfer/NameReserver.h"

#include <gmock/gmock.h>

#include <QRandomGenerator>

using namespace corvane;
using corvane::test::text;

namespace {

using Mode = ExportBatch::Mode;
constexpr auto kWhole = ExportRowKind::wholeClip;
constexpr auto kSubclip = ExportRowKind::subclip;

ExportNamingOptions preset(NamingPreset chosen) {
    ExportNamingOptions options;
    applyPreset(options, chosen, text("  Harbor Shoot "));
    return options;
}

const ExportNamingOptions kCustom{.baseName = text("Harbor"),
                                  .includeShootDate = true,
                                  .numberingMode =
                                      ExportNamingOptions::NumberingMode::originalFileNumber,
                                  .includeSelectType = true};

ExportNameParts clip(const char *name, const ExportNamingOptions &options,
                     Mode mode = Mode::fastCopy, int sequence = 1) {
    return {.kind = kWhole,
            .mode = mode,
            .originalFilename = text(name),
            .options = options,
            .shootDate = text("2024-05-01"),
            .sequence = sequence};
}

ExportNameParts subclip(const char *name, const char *label, const ExportNamingOptions &options,
                        Mode mode = Mode::fastCopy, int sequence = 1) {
    ExportNameParts parts = clip(name, options, mode, sequence);
    parts.kind = kSubclip;
    parts.subclipLabel = label ? std::optional(text(label)) : std::nullopt;
    parts.subclipIndex = 2;
    return parts;
}

} // namespace

TEST(ExportNaming, BuildsTheNamesOfThePresets) {
    const auto original = preset(NamingPreset::keepOriginal);
    const auto numbered = preset(NamingPreset::projectNameNumber);
    const std::pair<ExportNameParts, const char *> table[] = {
        {clip("A012_C003.MOV", original), "A012_C003.MOV"},
        {subclip("A012_C003.MOV", "Wide pan", original), "A012_C003_Wide pan.MOV"},
        {subclip("A012_C003.MOV", nullptr, original), "A012_C003_subclip-2.MOV"},
        {subclip("A012_C003.MOV", " ", original), "A012_C003_subclip-2.MOV"},
        {clip("A012_C003.MOV", original, Mode::accurateTranscode), "A012_C003.mp4"},
        {clip("DSC0042.MOV", numbered, Mode::fastCopy, 3), "Harbor Shoot_003.MOV"},
        {clip("DSC0042.MOV", numbered, Mode::fastCopy, 1000), "Harbor Shoot_1000.MOV"},
        {subclip("DSC0042.MOV", "Gulls: close", numbered, Mode::accurateTranscode, 4),
         "Harbor Shoot_004_Gulls close.mp4"},
        {clip("IMG_1234.MOV", kCustom), "2024-05-01_Harbor_1234_select.MOV"},
        {clip("take12.MOV", kCustom, Mode::fastCopy, 7), "2024-05-01_Harbor_007_select.MOV"},
        {clip(".MOV", {}), "untitled.MOV"},
        {clip("::", original), "untitled"},
        {clip("a.m/o\\v", {}), "a.mov"},
        {clip("take", {.includeOriginalFileNumber = true}), "take"},
        {clip("IMG_1234.MOV", {.includeOriginalFileNumber = true,
                               .numberingMode = ExportNamingOptions::NumberingMode::sequential}),
         "001_1234.MOV"},
        {subclip("take.mov", "///", {.includeSubclipLabel = true, .includeSelectType = true}),
         "subclip.mov"},
    };
    for (const auto &[parts, expected] : table) {
        EXPECT_EQ(buildExportName(parts), text(expected));
    }
    ExportNamingOptions nameless;
    applyPreset(nameless, NamingPreset::projectNameNumber, text(" "));
    EXPECT_EQ(nameless.baseName, text("Project"));
}

TEST(ExportNaming, RemovesCharactersThatFileNamesCannotContain) {
    const std::pair<const char *, const char *> table[] = {
        {"a/b:c\\d", "abcd"}, {" a \u00A0\u2003 b ", "a b"},
        {"a\tb\x7f", "ab"},   {"..hidden", "hidden"},
        {". .", ""},          {"...", ""},
        {":/", ""},           {". ..x", "..x"},
        {"Süd 🎬", "Süd 🎬"},
    };
    for (const auto &[name, expected] : table) {
        EXPECT_EQ(sanitizeNameComponent(text(name)), text(expected)) << name;
    }
}

TEST(ExportNaming, FindsTheFileNumberOfACamera) {
    const std::pair<const char *, const char *> table[] = {
        {"C0012.MP4", "C0012"},    {"IMG_1234.MOV", "1234"}, {"clip-007.mov", "007"},
        {"take12.mov", ""},        {"DSC0042.MOV", ""},      {"A001_C002_0101AB.mov", ""},
        {"A012_C003.mov", "C003"}, {"x-12.mov", ""},
    };
    for (const auto &[name, expected] : table) {
        EXPECT_EQ(originalFileNumber(text(name)).value_or(QString()), text(expected)) << name;
    }
}

TEST(ExportNaming, SetsOneOptionByItsKey) {
    ExportNamingOptions options;
    const auto set = [&](const char *key, const char *value) {
        setNamingOption(options, text(key), text(value));
    };
    set("baseName", "Harbor");
    set("includeShootDate", "true");
    set("includeSelectType", "on");
    set("numberingMode", "original-file-number");
    EXPECT_EQ(options, kCustom);
    EXPECT_THROW(set("basename", "x"), NamingOptionError);
    EXPECT_THROW(set("includeShootDate", "maybe"), NamingOptionError);
    EXPECT_THROW(set("numberingMode", "upwards"), NamingOptionError);
}

TEST(ExportNaming, NumbersANameThatIsTakenByNameOrStem) {
    EXPECT_EQ(uniqueExportName(text("take.mov"), {text("take.mov")}, {}), text("take (2).mov"));
    EXPECT_EQ(uniqueExportName(text("Take.MOV"), {}, {text("take")}), text("Take (2).MOV"));
    EXPECT_EQ(uniqueExportName(text("Take.MOV"), {text("take (2).mov")},
                               {text("take"), text("take (3)")}),
              text("Take (4).MOV"));
}

TEST(NameReserver, ReservesTheSameNamesAsUniqueExportName) {
    QRandomGenerator random(7);
    const QStringList stems{text("a"), text("A"),         text("a (2)"),
                            text("b"), text("a (2) (2)"), QString()};
    const QStringList extensions{text(".mov"), text(".MXF"), text(".mp4"), QString()};
    NameReserver reserver;
    QSet<QString> names;
    QSet<QString> usedStems;
    for (int step = 0; step < 4000; ++step) {
        const QString name = stems.at(random.bounded(int(stems.size()))) +
                             extensions.at(random.bounded(int(extensions.size())));
        const bool isSidecar = random.bounded(4) == 0;
        const QString expected =
            uniqueExportName(name, names, isSidecar ? QSet<QString>() : usedStems);
        ASSERT_EQ(isSidecar ? reserver.takeBesideStem(name) : reserver.take(name), expected);
        names.insert(expected.toLower());
        if (random.bounded(3) == 0) {
            usedStems.insert(paths::split(expected).stem.toLower());
            reserver.reserveStem(paths::split(expected).stem);
        }
    }
}

TEST(NameReserver, AppendsTheTimeOnceAllNumbersAreTaken) {
    NameReserver reserver({}, [] { return qint64(1'700'000'000); });
    QSet<QString> names;
    for (int count = 0; count < 10'000; ++count) {
        names.insert(reserver.take(text("a.mov")));
    }
    EXPECT_EQ(names.size(), 10'000);
    EXPECT_TRUE(names.contains(text("a (9999).mov")));
    EXPECT_TRUE(names.contains(text("a (1700000000).mov")));
    EXPECT_EQ(reserver.take(text("A.mov")), text("A (1700000001).mov"));
}
