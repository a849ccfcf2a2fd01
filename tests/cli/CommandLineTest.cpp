#include "CliTest.h"
#include "platform/InstanceLock.h"

namespace corvane {

namespace {

using test::CliTest;
using testing::HasSubstr;
using testing::StartsWith;

class CommandLine : public CliTest {};

} // namespace

TEST_F(CommandLine, ExplainsWrongUsageWithStatusTwo) {
    createWithClips(1);
    const QByteArray before = folder.read("p/Harbor.corvane");
    const std::pair<const char *, const char *> wrong[] = {
        {"", "A command is missing"},
        {"deliver P", "Unknown command \"deliver\""},
        {"media P --confirm everything", "confirm"},
        {"list P --wrong", "wrong"},
        {"list", "An argument is missing"},
        {"info P extra", "Unexpected argument \"extra\""},
        {"create @p/other", "--name is missing"},
        {"create @p/other --name a/b", "--name takes"},
        {"create @p/other --name .hidden", "--name takes"},
        {"import P @card --to @x", "--copy"},
        {"list P --rating 6", "--rating takes a whole number from 0 to 5, not \"6\""},
        {"list P --sort size", "--sort takes filename or imported or rating or duration"},
        {"mark P clip1.mp4", "Nothing to mark"},
        {"mark P clip1.mp4 --rating -1", "--rating"},
        {"mark P clip1.mp4 --rating 2.0", "--rating"},
        {"mark P clip1.mp4 --favorite yes", "--favorite takes on or off, not \"yes\""},
        {"mark P --rating 3", "An argument is missing"},
        {"subclip P clip1.mp4 2 1", "IN must be less than OUT"},
        {"subclip P clip1.mp4 1 1.0", "IN must be less than OUT"},
        {"subclip P clip1.mp4 0 inf", "OUT takes seconds"},
        {"subclip P clip1.mp4 nan 1", "IN takes seconds"},
        {"subclip P clip1.mp4 -- -1 1", "IN takes seconds"},
        {"subclip P clip1.mp4 0 1s", "OUT takes seconds"},
        {"handoff P", "--to is missing."},
        {"handoff P --to @out --output hd-only", "--output takes"},
        {"export P --mode slow", "--mode takes fast-copy or accurate-transcode"},
        {"export P --output hd", "--output takes"},
        {"export P --naming keepOriginal", "--naming takes keep-original"},
        {"export P --naming custom --custom baseName", "KEY=VALUE"},
        {"export P --naming custom --custom colour=red", "colour"},
        {"export P --naming custom --custom numberingMode=roman", "roman"},
        {"export P --custom baseName=x", "--naming custom"},
        {"export P --handles -1", "--handles takes seconds"},
    };
    for (const auto &[line, message] : wrong) {
        EXPECT_EQ(run(line), kWrongUsage) << line;
        EXPECT_THAT(console.error.toStdString(), HasSubstr(message)) << line;
        EXPECT_TRUE(console.output.isEmpty()) << line;
    }
    EXPECT_EQ(folder.read("p/Harbor.corvane"), before);
    EXPECT_FALSE(folder.has("p/other.corvane"));
}

TEST_F(CommandLine, PrintsOneJSONObjectEvenOnFailure) {
    EXPECT_THAT(text(json("info @missing.corvane", kRefused), "error").toStdString(),
                StartsWith("Open failed: Failed to read "));
    EXPECT_THAT(text(json("info", kWrongUsage), "error").toStdString(), HasSubstr("missing"));
    EXPECT_THAT(text(json("nonsense", kWrongUsage), "error").toStdString(), HasSubstr("nonsense"));
    EXPECT_FALSE(text(json("list --help"), "help").isEmpty());
    EXPECT_FALSE(text(json("--version"), "version").isEmpty());
}

TEST_F(CommandLine, PrintsHelpForTheProgramAndEachCommand) {
    EXPECT_EQ(run("--help"), kAllDone);
    const std::string help = console.output.toStdString();
    for (const CliCommand &command : commands()) {
        const std::string name = command.name.toStdString();
        EXPECT_THAT(help, HasSubstr("  " + name));
        EXPECT_EQ(run((name + " --help").c_str()), kAllDone);
        EXPECT_THAT(console.output.toStdString(), StartsWith("Usage: corvane-cli " + name + ' '));
        EXPECT_THAT(console.output.toStdString(), HasSubstr("--json"));
    }
}

TEST_F(CommandLine, RefusesCommandsThatNeedDataLockedByAnotherProcess) {
    createWithClips(1);
    const InstanceLock lock(console.dataFolder());
    EXPECT_EQ(run("list P"), kRefused);
    EXPECT_THAT(console.error.toStdString(), HasSubstr("is using Corvane's data"));
    EXPECT_EQ(run("mark P clip1.mp4 --rating 3"), kRefused);
    EXPECT_EQ(run("create @p/second --name Second"), kRefused);
    EXPECT_FALSE(folder.has("p/second.corvane"));
    EXPECT_EQ(run("scan @card"), kAllDone);
    EXPECT_EQ(run("anchor @card/clip1.mp4"), kAllDone);
}

TEST_F(CommandLine, VerifiesFilesAgainstAnchors) {
    const QString file = folder.write("clip.mov", "bytes");
    const QString anchor = text(json("anchor @clip.mov"), "anchor");
    const QByteArray verify = "verify " + anchor.toUtf8() + " @clip.mov";
    expectMembers(json(verify.constData()), R"({"result": "matches"})");
    folder.write("clip.mov", "other");
    expectMembers(json(verify.constData(), kRefused), R"({"result": "mismatches"})");
    expectMembers(json("verify nothing @clip.mov", kRefused), R"({"result": "unverifiable"})");
    EXPECT_EQ(run("anchor @missing.mov"), kRefused);
    EXPECT_THAT(console.error.toStdString(), StartsWith("Failed to read missing.mov: "));
}

TEST_F(CommandLine, RemovesControlCharactersOfFileNames) {
    folder.write("card/a\x1b[2J\n.mp4", "bytes");
    EXPECT_EQ(run("scan @card"), kAllDone);
    EXPECT_FALSE(console.output.contains('\x1b'));
    EXPECT_EQ(console.output.count('\n'), 3) << console.output.data();
}

} // namespace corvane
