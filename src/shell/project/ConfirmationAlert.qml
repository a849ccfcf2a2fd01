// The question of the delete key, up while it waits for its answer.
//   review: what asks, and takes the answer
import QtQuick
import Corvane.Kit
import Corvane.Review

Alert {
    id: root

    required property ReviewScreenState review

    function follow() {
        if (review.hasConfirmation) { // the texts stay while the alert goes
            const question = review.confirmation;
            title = question.title;
            text = question.text;
            acceptText = question.acceptButton;
            cancelText = question.cancelButton;
            open();
        } else {
            close();
        }
    }

    objectName: "confirmation"
    destructive: true
    onAccepted: review.answerConfirmation(true)
    onRejected: review.answerConfirmation(false)

    property Connections connections: Connections {
        target: root.review

        function onConfirmationChanged() {
            root.follow();
        }
    }
}
