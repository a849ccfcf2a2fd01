// The form of a clip's compact row: its picture at the left, three lines beside it.
RowForm {
}
