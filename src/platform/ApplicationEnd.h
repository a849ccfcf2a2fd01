#pragma once

/// The end of the process. Background work that can take longer than a second checks it and stops,
/// so that quitting never waits for a file to be read. Thread-safe.
namespace corvane::applicationEnd {

/// True between `request` and `reset`.
bool isRequested() noexcept;

/// Called when the event loop has ended, before the objects whose executors may be busy are
/// destroyed.
void request() noexcept;

/// Allows background work again, for another application object in the same process.
void reset() noexcept;

} // namespace corvane::applicationEnd
