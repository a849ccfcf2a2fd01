// The kinds of text.
import QtQuick
import Corvane.Kit

GallerySection {
    title: "Types"

    Label { text: "name: Corvane"; type: Theme.name }
    Label { text: "title: New Project"; type: Theme.title }
    Label { text: "head: Recent Projects"; type: Theme.head }
    Label { text: "body: Second unit joins at noon."; type: Theme.body }
    Label { text: "body label: Create project"; type: Theme.bodyLabel }
    Label { text: "list name: A003_C008_0612.MOV"; type: Theme.listName }
    Label { text: "list: 86 clips"; type: Theme.list }
    Label { text: "small: 1:54 · 1 subclip"; type: Theme.small; muted: true }
    Label { text: "micro: 00:41.20 – 00:58.08"; type: Theme.micro; muted: true }
    Label { text: "preview: .corvane-cache/"; type: Theme.preview; muted: true }
    FigureLabel { text: "00:11:11  figures"; type: Theme.head }
    FigureLabel { text: "00:00:00  figures"; type: Theme.head }
    Label {
        width: parent.width
        text: "Wrapped: rejected clips disappear from the visible list. Press X to un-reject."
        wrapMode: Text.Wrap
    }
}
