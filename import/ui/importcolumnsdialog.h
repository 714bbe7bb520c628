#pragma once

#include "import/importcolumns.h"

#include <QDialog>

#include <vector>

class QComboBox;
class QPushButton;

namespace quillon {

class ProblemLabel;

/// Asks which column of a file is what.
class ImportColumnsDialog : public QDialog
{
    Q_OBJECT

public:
    /// `examples` has a text for each column.
    ImportColumnsDialog(
        const std::vector<ImportColumn> &columns, const std::vector<QString> &examples, QWidget *parent);

    /// What was answered, column by column.
    [[nodiscard]] std::vector<ColumnUse> uses() const;

private:
    void tellMissing();

    std::vector<ImportColumn> m_columns;
    std::vector<QComboBox *> m_combos;
    ProblemLabel *m_problem;
    QPushButton *m_ok;
};

} // namespace quillon
