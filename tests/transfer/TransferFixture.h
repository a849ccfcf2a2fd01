#pragma once

#include "transfer/FakeSessions.h"

namespace corvane::test {

/// A test folder with sources in "footage" and outputs in "out", behind a file system that can
/// fail. Temporary files go to "tmp".
class TransferTest : public testing::Test {
  protected:
    TransferTest() { qputenv("TMPDIR", folder.folder("tmp").toUtf8()); }
    ~TransferTest() override { qunsetenv("TMPDIR"); }

    static QString footage(const char *name) { return text("footage/") + text(name); }
    QString at(QAnyStringView relative) const { return folder.at(relative); }
    QByteArray delivered(const char *name) const { return folder.read(text("out/") + text(name)); }
    bool has(QAnyStringView path) const { return folder.has(path); }
    void expectNoTemporaries() const {
        EXPECT_THAT(folder.temporaries(), testing::IsEmpty());
        EXPECT_THAT(folder.names("tmp"), testing::IsEmpty());
    }

    TestFolder folder;
    FaultyFileSystem files;
    FileSystemScope scope{files};
    TestClock clock;
    FakeSessions sessions;
};

} // namespace corvane::test
