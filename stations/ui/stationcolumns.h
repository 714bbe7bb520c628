#pragma once

#include "platform/codepage.h"
#include "stations/stationcsv.h"

#include <QByteArray>
#include <QDialog>
#include <QStringList>

#include <memory>
#include <vector>

class QComboBox;

namespace quillon {

namespace Ui {
class StationColumns;
}

/// Asks how a CSV of stations is to be read: encoding, separator, and what each column holds. It shows the
/// first lines as they are read so.
class StationColumns : public QDialog
{
    Q_OBJECT

public:
    /// `beginning` are the first bytes of the file, of which the answers are guessed.
    StationColumns(
        const QByteArray &beginning, const QString &fileName, const CodePage &codePage, QWidget *parent);
    ~StationColumns() override;

    [[nodiscard]] const CsvLayout &layoutOfFile() const { return m_layout; }

private:
    void readBeginning();
    void showColumns();
    void chooseColumn(int column, int choice);
    void tellMissing();

    std::unique_ptr<Ui::StationColumns> m_ui;
    QByteArray m_beginning;
    CsvLayout m_layout;
    std::vector<QStringList> m_records;
    std::vector<QComboBox *> m_choices; ///< what each column holds
};

} // namespace quillon
