#pragma once

#include "support/dialogs.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

namespace quillon::test {

/// Answers the question for a file with this path; with a `filter`, after that one was chosen. Qt's own
/// dialog has to be the one that asks (Qt::AA_DontUseNativeDialogs).
inline void saveAs(DialogAnswers &answers, const QString &path, int filter = -1)
{
    answers.doing([path, filter](QWidget *box) {
        auto *dialog = qobject_cast<QFileDialog *>(box);
        if (filter >= 0) {
            auto *kinds = dialog->findChild<QComboBox *>(QStringLiteral("fileTypeCombo"));
            kinds->setCurrentIndex(filter);
            Q_EMIT kinds->textActivated(kinds->currentText());
            Q_EMIT kinds->activated(filter);
        }
        dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))->setText(path);
        // A question that follows is the next one to be answered.
        QTimer::singleShot(
            0, dialog, [dialog] { dialog->findChild<QDialogButtonBox *>()->buttons().first()->click(); });
    });
}

} // namespace quillon::test
