#include "trust/AuthorizationFile.h"

#include "support/TestFolder.h"
#include "trust/PathSafety.h"

#include <gtest/gtest.h>

using namespace corvane;
using corvane::test::TestFolder;

namespace {

const QString kName = QStringLiteral("media-authorizations.json");
const QString kKey = QStringLiteral("/p/a.corvane");

AuthorizationTables readText(const TestFolder &folder, const QByteArray &text) {
    return AuthorizationFile::read(folder.write(kName, text));
}

AuthorizationTables withPaths(const AuthorizedPaths &paths) {
    return {.authorizedPaths = {{kKey, paths}}};
}

} // namespace

TEST(AuthorizationFile, ReadsBackWhatItWrote) {
    const TestFolder folder;
    const QString path = QStringLiteral("/m/\u00e9 \"x\".mov");
    const RootIdentity identity{{-7, std::numeric_limits<quint64>::max(),
                                 QStringLiteral("1111-AAAA"), QStringLiteral("/DCIM")},
                                QStringLiteral("3:00")};
    AuthorizationTables tables = withPaths(
        {{path, identity}, {QStringLiteral("/m/b.mov"), std::nullopt}, {{}, RootIdentity{}}});
    tables.authorizedMediaRoots.insert(kKey, {{5, 6, {}, {}}, QStringLiteral("/p/media")});
    tables.pendingLegacyPaths.insert(kKey, {path, QStringLiteral("/m/b.mov")});
    tables.contentMismatchPaths.insert(kKey, {path});
    AuthorizationFile::write(tables, folder.at(kName));
    EXPECT_EQ(AuthorizationFile::read(folder.at(kName)), tables);
}

TEST(AuthorizationFile, AddsCurrentIdentitiesToOlderFormats) {
    const TestFolder folder;
    folder.folder("card");
    const QByteArray lists = QByteArray(R"({"/p/a.corvane":["%/x/../card/a.mov","%/gone/b.mov"]})")
                                 .replace("%", folder.path().toUtf8());
    AuthorizationTables tables =
        withPaths({{folder.at("card/a.mov"), PathSafety::folderIdentity(folder.at("card"))},
                   {folder.at("gone/b.mov"), std::nullopt}});
    EXPECT_EQ(readText(folder, lists), tables);
    tables.authorizedMediaRoots.insert(kKey, {{1, 2, {}, {}}, QStringLiteral("/p/media")});
    tables.pendingLegacyPaths.insert(kKey, {QStringLiteral("/c.mov")});
    EXPECT_EQ(readText(folder, R"({"paths":)" + lists + R"(,"mediaRoots":{"/p/a.corvane":
        {"path":"/p/media","device":1,"inode":2}},"pendingLegacy":{"/p/a.corvane":["/c.mov"]}})"),
              tables);
}

TEST(AuthorizationFile, ReportsAFileThatCannotBeRead) {
    const TestFolder folder;
    EXPECT_EQ(AuthorizationFile::read(folder.at(kName)), AuthorizationTables());
    EXPECT_THROW(AuthorizationFile::read(folder.path()), Failure);
    for (const char *text : {"", "[]", "{", R"({"paths":7})", R"({"/p":["/a",3]})",
                             R"({"paths":{"/p":{"/a":{"device":1,"inode":-2}}}})",
                             R"({"paths":{"/p":{"/a":{"inode":2}}}})"}) {
        EXPECT_THROW(readText(folder, text), Failure) << text;
    }
}

TEST(AuthorizationFile, ReadsAndWritesUpToEightMebibytes) {
    const TestFolder folder;
    QByteArray text = R"({"paths":{"/p/a.corvane":{"/b":null}},"mediaRoots":{},)"
                      R"("pendingLegacy":{},"contentMismatch":{}})";
    const qsizetype padding = 8388608 - text.size();
    text.insert(text.indexOf("/b") + 2, QByteArray(padding, 'x'));
    const QString longest = QStringLiteral("/b") + QString(padding, QLatin1Char('x'));
    const AuthorizationTables tables = withPaths({{longest, std::nullopt}});
    EXPECT_THROW(readText(folder, text + ' '), Failure);
    EXPECT_EQ(readText(folder, text), tables);
    EXPECT_EQ(AuthorizationFile::write(tables, folder.at(kName)), 8388608);
    EXPECT_EQ(folder.read(kName), text);
    EXPECT_THROW(AuthorizationFile::write(withPaths({{longest + QLatin1Char('x'), std::nullopt}}),
                                          folder.at(kName)),
                 Failure);
    EXPECT_EQ(folder.read(kName), text);
}
