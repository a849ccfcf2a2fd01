// Asks the user to confirm a deletion.
import QtQuick
import Corvane.Kit
import Corvane.Review

Alert {
    required property ReviewScreenState review

    objectName: "confirmation"
    destructive: true
    subject: review.hasConfirmation ? {
        title: review.confirmation.title,
        text: review.confirmation.text,
        acceptText: review.confirmation.acceptButton,
        cancelText: review.confirmation.cancelButton
    } : null
    onAccepted: review.answerConfirmation(true)
    onRejected: review.answerConfirmation(false)
}
