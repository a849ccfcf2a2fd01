#include "cli/Command.h"
#include "cli/JSONMembers.h"
#include "trust/ContentHasher.h"

namespace corvane {

using ContentHasher::AnchorVerification;

template <>
inline constexpr auto rawValues<AnchorVerification> = std::to_array<RawValue<AnchorVerification>>({
    {AnchorVerification::matches, "matches"},
    {AnchorVerification::mismatches, "mismatches"},
    {AnchorVerification::unverifiable, "unverifiable"},
});

namespace {

void printResult(const CommandCall &call, std::string_view key, const QString &text) {
    if (!call.isJSON()) {
        call.printLine(text);
        return;
    }
    call.printJSON([&](JSONWriter &writer) {
        writer.beginObject();
        writeMember(writer, key, text);
        writer.endObject();
    });
}

int runAnchor(const CommandCall &call) {
    printResult(call, "anchor", ContentHasher::makeAnchor(call.path(0)));
    return kAllDone;
}

int runVerify(const CommandCall &call) {
    const auto result = ContentHasher::verifyAnchor(call.argument(0), call.path(1));
    printResult(call, "result", rawValue(result));
    return result == AnchorVerification::matches ? kAllDone : kRefused;
}

} // namespace

Command anchorCommand() {
    return {.name = QStringLiteral("anchor"),
            .synopsis = QStringLiteral("FILE"),
            .summary =
                QStringLiteral("Makes an anchor, by which the file's content is known again."),
            .fewestArguments = 1,
            .mostArguments = 1,
            .run = runAnchor};
}

Command verifyCommand() {
    return {.name = QStringLiteral("verify"),
            .synopsis = QStringLiteral("ANCHOR FILE"),
            .summary =
                QStringLiteral("Tells whether the file still is what the anchor was made of."),
            .fewestArguments = 2,
            .mostArguments = 2,
            .run = runVerify};
}

} // namespace corvane
