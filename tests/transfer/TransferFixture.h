#pragma once

#include "transfer/FakeSessions.h"

namespace corvane::test {

/// A test folder with sources in "footage" and outputs in "out", behind a file system that can
/// fail. Temporary files go to "tmp".
class TransferTest : public testing::Test {
  protected:
    TransferTest() { qputenv("TMPDIR", folder.folder(text("tmp")).toUtf8()); }
    ~TransferTest() override { qunsetenv("TMPDIR"); }

    static QString footage(const char *name) { return text("footage/") + text(name); }
    QString at(const char *relative) const { return folder.at(text(relative)); }
    QByteArray delivered(const char *name) const { return folder.read(text("out/") + text(name)); }
    bool has(const char *path) const { return folder.has(text(path)); }
    void expectNoTemporaries() const {
        EXPECT_THAT(folder.temporaries(), testing::IsEmpty());
        EXPECT_THAT(folder.names(text("tmp")), testing::IsEmpty());
    }

    TestFolder folder;
    FaultyFileSystem files;
    FileSystemScope scope{files};
    TestClock clock;
    FakeSessions sessions;
};

} // namespace corvane::test
