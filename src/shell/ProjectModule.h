#pragma once

#include <memory>

namespace corvane {

class CorvaneApp;
class OpenProjectScreen;

/// The part of the program that an open project needs: the player, the flows and their screens. It
/// lies beside the executable as "corvane-project" and is loaded when it is first asked for, which
/// takes about a tenth of a second. Main thread.
namespace projectModule {

/// The module's entry, with C linkage under this name.
using Entry = OpenProjectScreen *(*)(CorvaneApp &app);
constexpr const char *kEntryName = "corvaneMakeProjectScreen";

/// Throws a Failure where the module can't be loaded: the installation is broken then.
std::unique_ptr<OpenProjectScreen> makeProjectScreen(CorvaneApp &app);

} // namespace projectModule

} // namespace corvane
