#include "platform/ApplicationEnd.h"

#include <atomic>

namespace corvane::applicationEnd {

namespace {

std::atomic<bool> isEndRequested = false;

} // namespace

bool isRequested() noexcept {
    return isEndRequested;
}

void request() noexcept {
    isEndRequested = true;
}

void reset() noexcept {
    isEndRequested = false;
}

} // namespace corvane::applicationEnd
