#include "platform/Paths.h"
#include "trust/PathSafety.h"

namespace corvane::ProxyInvariant {

Violation Violation::sourcePathResolvesUnderProxiesCache(const QString &resolvedPath) {
    return Violation(QStringLiteral("Export blocked: %1 resolves under .corvane-cache/proxies. "
                                    "Exports must read source bytes, never proxies.")
                         .arg(resolvedPath));
}

void assertNotProxySource(const QString &path) {
    const QString resolved = paths::resolvingLinks(paths::standardized(path));
    const QString bounded = resolved + QLatin1Char('/');
    if (bounded.contains(QStringLiteral("/.corvane-cache/proxies/"))) {
        throw Violation::sourcePathResolvesUnderProxiesCache(resolved);
    }
}

void assertNoProxySources(const QStringList &paths) {
    for (const QString &path : paths) {
        assertNotProxySource(path);
    }
}

} // namespace corvane::ProxyInvariant
