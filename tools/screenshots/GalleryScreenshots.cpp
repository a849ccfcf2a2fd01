#include "Screenshot.h"

namespace corvane {

namespace {

constexpr QSize pageSize(1440, 1240);
constexpr QSize screenSize(1440, 900);

Screenshot page(const char *name, QSize size, const char *qml) {
    return {QString::fromLatin1(name), size,
            [qml](QQmlEngine &engine) { return createWindow(engine, qml); }};
}

} // namespace

QList<Screenshot> galleryScreenshots() {
    return {
        page("gallery", pageSize, R"(
            import QtQuick
            import Corvane.Gallery
            Gallery { Component.onCompleted: openMenu() })"),
        page("gallery-alert", screenSize, R"(
            import QtQuick
            import Corvane.Kit
            AppWindow {
                Alert {
                    title: "Reject 2 clips?"
                    text: "Rejected clips disappear from the visible list. Toggle 'Show rejects' to bring them back, or press X to un-reject. Cmd-Z to undo."
                    acceptText: "Apply"; cancelText: "Cancel"; destructive: true
                    Component.onCompleted: open()
                }
            })"),
        page("gallery-sheet", screenSize, R"(
            import QtQuick
            import Corvane.Kit
            AppWindow {
                Sheet {
                    title: "Export"; backText: "Back"; sheetWidth: 560; defaultButton: start
                    Label { x: 24; y: 24; text: "What the sheet is about." }
                    Item { width: 1; height: 120 }
                    footer: [
                        Button { large: true; text: "Cancel" },
                        Button { id: start; large: true; kind: Button.Primary; text: "Start Export" }
                    ]
                    Component.onCompleted: open()
                }
            })"),
        page("gallery-calendar", screenSize, R"(
            import QtQuick
            import Corvane.Kit
            AppWindow {
                DateField {
                    id: field
                    x: 600; y: 200; name: "Shoot date"; date: "2025-06-13"
                    Component.onCompleted: openCalendar()
                }
            })"),
    };
}

} // namespace corvane
