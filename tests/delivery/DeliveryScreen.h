#pragma once

#include "support/screens/Screen.h"
#include "transfer/FakeSessions.h"

namespace corvane::test {

/// A window with the sheets of an export or a handoff.
class DeliveryScreen : public Screen {
  public:
    /// Shows the view of a module, "Export" or "Handoff", for a sheet.
    DeliveryScreen(const char *module, const char *view, QObject *sheet, QSize size = {1440, 900})
        : Screen(QByteArray(kQml).replace("MODULE", module).replace("VIEW", view), size,
                 {{text("delivery"), QVariant::fromValue(sheet)}}),
          m_prefix(text(module).toLower()) {}

    /// Waits until that item has the focus, and its sheet is the only one.
    bool hasFocus(const char *name) const {
        return waitFor(
            [&] { return focused() && focused()->objectName() == text(name) && sheets() == 1; });
    }
    bool isClosed() const {
        return waitFor([this] { return sheets() == 0; });
    }

  private:
    static constexpr auto kQml = R"(
        import QtQuick
        import Corvane.MODULE
        import Corvane.Kit
        AppWindow {
            id: window
            property var delivery
            color: Theme.windowBackground
            VIEW {
                sheet: window.delivery
            }
        })";

    int sheets() const {
        return shows(m_prefix + text(".configure.start")) +
               shows(m_prefix + text(".running.cancel")) + shows(m_prefix + text(".done.done"));
    }

    QString m_prefix;
};

} // namespace corvane::test
