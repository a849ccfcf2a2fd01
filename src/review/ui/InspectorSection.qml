// A part of the inspector under its heading.
//   title: string; its content below
import QtQuick
import Corvane.Kit

Column {
    id: section

    required property string title

    spacing: Theme.s6

    Label {
        width: parent.width
        text: section.title
        type: Theme.smallStrong
        muted: true
        Accessible.role: Accessible.Heading
    }
}
