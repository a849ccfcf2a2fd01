// A section of the inspector with a heading.
//   title: string; its content below
import QtQuick
import Corvane.Kit

Column {
    id: section

    required property string title

    spacing: Theme.spacing6

    Label {
        width: parent.width
        text: section.title
        textStyle: Theme.smallStrongStyle
        muted: true
        Accessible.role: Accessible.Heading
    }
}
