// Asks the user to confirm a deletion.
import QtQuick
import Corvane.Kit
import Corvane.Review

Alert {
    required property ReviewScreenState review

    objectName: "confirmation"
    destructive: true
    subject: {
        if (!review.hasConfirmation) {
            return null;
        }
        const question = review.confirmation;
        return {
            title: question.title,
            text: question.text,
            acceptText: question.acceptButton,
            cancelText: question.cancelButton
        };
    }
    onAccepted: review.answerConfirmation(true)
    onRejected: review.answerConfirmation(false)
}
