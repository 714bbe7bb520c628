#pragma once

#include "core/fieldchecks.h"

#include <QList>

class QWidget;

namespace quillon {

class ProblemLabel;

/// A QLineEdit, QPlainTextEdit or QComboBox and what is typed into it.
struct WatchedField
{
    QWidget *field;
    FieldKind kind;
};

/// As long as `label` lives, it tells what fieldProblem finds in these fields of its window, at once, whether
/// a text was typed or set by the program; in the order of the fields, each sentence once. The fields
/// concerned have a red frame and the problem as accessible description. Nothing is blocked.
void watchForProblems(ProblemLabel &label, const CodePage &codePage, const QList<WatchedField> &fields);

} // namespace quillon
