// The text styles.
import QtQuick
import Corvane.Kit

GallerySection {
    title: "Types"

    Label { text: "name: Corvane"; textStyle: Theme.productNameStyle }
    Label { text: "title: New Project"; textStyle: Theme.titleStyle }
    Label { text: "head: Recent Projects"; textStyle: Theme.headingStyle }
    Label { text: "body: Second unit joins at noon."; textStyle: Theme.bodyStyle }
    Label { text: "body label: Create project"; textStyle: Theme.bodyLabelStyle }
    Label { text: "list name: A003_C008_0612.MOV"; textStyle: Theme.listNameStyle }
    Label { text: "list: 86 clips"; textStyle: Theme.listStyle }
    Label { text: "small: 1:54 · 1 subclip"; textStyle: Theme.smallStyle; muted: true }
    Label { text: "micro: 00:41.20 – 00:58.08"; textStyle: Theme.microStyle; muted: true }
    Label { text: "preview: .corvane-cache/"; textStyle: Theme.layoutPreviewStyle; muted: true }
    TabularLabel { text: "00:11:11  figures"; textStyle: Theme.headingStyle }
    TabularLabel { text: "00:00:00  figures"; textStyle: Theme.headingStyle }
    Label {
        width: parent.width
        text: "Wrapped: rejected clips disappear from the visible list. Press X to un-reject."
        wrapMode: Text.Wrap
    }
}
