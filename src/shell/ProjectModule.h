#pragma once

#include <memory>

namespace corvane {

class CorvaneApp;
class OpenProjectScreen;

/// Loads the module "corvane-project" beside the executable, which contains the player, the flows
/// and their screens. Loading takes about 0.1 s. Main thread only.
namespace projectModule {

/// Entry point of the module, with C linkage and the name `kEntryName`.
using Entry = OpenProjectScreen *(*)(CorvaneApp &app);
constexpr const char *kEntryName = "corvaneMakeProjectScreen";

/// Loads the module on the first call. Throws `Failure` if it cannot be loaded, because the
/// installation is broken.
std::unique_ptr<OpenProjectScreen> makeProjectScreen(CorvaneApp &app);

} // namespace projectModule

} // namespace corvane
