// The layout of a clip's compact row: the thumbnail on the left, three lines on the right.
RowForm {
}
