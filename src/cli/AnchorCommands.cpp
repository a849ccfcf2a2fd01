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

void printMember(const CommandCall &call, std::string_view key, const QString &text) {
    call.printResult([&](JSONWriter &writer) { writeMember(writer, key, text); },
                     [&] { call.printLine(text); });
}

int runAnchor(const CommandCall &call) {
    printMember(call, "anchor", ContentHasher::makeAnchor(call.path(0)));
    return kAllDone;
}

int runVerify(const CommandCall &call) {
    const auto result = ContentHasher::verifyAnchor(call.argument(0), call.path(1));
    printMember(call, "result", rawValue(result));
    return result == AnchorVerification::matches ? kAllDone : kRefused;
}

} // namespace

CliCommand anchorCommand() {
    return {.name = QStringLiteral("anchor"),
            .synopsis = QStringLiteral("FILE"),
            .summary =
                QStringLiteral("Makes an anchor, by which the file's content is known again."),
            .run = runAnchor};
}

CliCommand verifyCommand() {
    return {.name = QStringLiteral("verify"),
            .synopsis = QStringLiteral("ANCHOR FILE"),
            .summary =
                QStringLiteral("Tells whether the file still is what the anchor was made of."),
            .run = runVerify};
}

} // namespace corvane
