#pragma once

#include "core/manyentries.h"
#include "platform/codepage.h"

#include <QDialog>
#include <QStringList>

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

class QCheckBox;

namespace quillon {

namespace Ui {
class EditMany;
}

/// Gives fields of many receptions a new value: a tick and a value for each field, and what would change.
class EditMany : public QDialog
{
    Q_OBJECT

public:
    /// `entries` holds each number once; the log must outlive the window. `countries` are offered, and
    /// `codePage` is the one that the log is written in.
    EditMany(const Logbook &log, std::vector<qint32> entries, const QStringList &countries,
        const CodePage &codePage, QWidget *parent);
    ~EditMany() override;

    /// What else comes of a change, one line that is told with its effect; empty when nothing does.
    using Consequence = std::function<QString(const LogChange &)>;
    /// Tells of a change what `consequence` says, beside its effect.
    void tellAlso(Consequence consequence);

    /// Entries have changed: tells anew what would change. Those that are gone are the window's no more,
    /// whoever gets their numbers; it closes when none is left.
    void logChanged();

Q_SIGNALS:
    /// OK was pressed. The change is made of the log as it is now, and is never empty; `name` is what a
    /// person calls it: "Edit 37 receptions".
    void editChosen(const quillon::LogChange &change, const QString &name);

private:
    /// A field, its tick and its value.
    struct Row
    {
        LogField field {};
        QCheckBox *tick = nullptr;
        QWidget *value = nullptr;
        QString effect; ///< what would change of this field
    };

    void tellTitle();
    void OKButton_Click();
    void wire(std::size_t index);
    void watch(const CodePage &codePage);
    [[nodiscard]] std::optional<NewValue> newValue(const Row &row) const;
    void update(Row &row);
    void tellEffect();
    [[nodiscard]] LogChange change() const;

    const Logbook &m_log;
    std::vector<qint32> m_entries;
    std::unique_ptr<Ui::EditMany> m_ui;
    std::array<Row, fieldsForMany.size()> m_rows;
    Consequence m_consequence;
};

} // namespace quillon
