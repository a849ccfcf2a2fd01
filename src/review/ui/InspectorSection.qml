// A section of the inspector with a heading, as wide as its parent.
//   title: string; its content below
import QtQuick
import Corvane.Kit

Column {
    id: section

    required property string title

    width: parent.width
    spacing: Theme.spacing6

    Label {
        width: parent.width
        text: section.title
        textStyle: Theme.smallStrongStyle
        muted: true
        Accessible.role: Accessible.Heading
    }
}
