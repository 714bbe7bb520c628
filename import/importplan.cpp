#include "import/importplan.h"

#include "core/manyentries.h"

#include <QStringList>

#include <map>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

QString letters(qsizetype count)
{
    return count == 1 ? u"1 letter is"_s : u"%1 letters are"_s.arg(count);
}

} // namespace

LogChange importChange(const Logbook &log, std::span<const ImportRow *const> rows,
    std::span<const ImportMatch> matches, std::span<const ImportAction> actions, ImportTally &tally)
{
    LogChange change;
    std::map<qint32, LogEntry> completed;
    tally = {};
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const ImportRow &row = *rows[i];
        if (row.isRefused()) {
            ++tally.refused;
            continue;
        }
        const qint32 number = matches[i].entry;
        if (actions[i] == ImportAction::Add) {
            change.added.push_back(row.entry);
            ++tally.added;
            tally.lettersLost += row.lettersLost;
        } else if (actions[i] == ImportAction::Complete && number >= 0 && number < log.count()
            && !isDeleted(log.entry(number))) {
            LogEntry &entry = completed.try_emplace(number, log.entry(number)).first->second;
            const auto fields = completedFields(entry, row.entry);
            for (const LogField field : fields) {
                setFieldValue(entry, field, fieldValue(row.entry, field));
            }
            if (fields.empty()) {
                ++tally.alreadyThere;
            } else {
                tally.lettersLost += row.lettersLost;
            }
        } else {
            ++(matches[i].isThere() ? tally.alreadyThere : tally.leftOut);
        }
    }
    for (const auto &[number, entry] : completed) {
        const LogChange fields = LogChange::between(number, log.entry(number), entry);
        change.fields.insert(change.fields.end(), fields.fields.begin(), fields.fields.end());
        tally.completed += fields.fields.empty() ? 0 : 1;
    }
    return change;
}

QString roomRefusal(const Logbook &log, qsizetype added)
{
    if (added <= log.room()) {
        return {};
    }
    return u"Nothing was imported: these are %1, and the log has room for %2 more. Leave some out, or start "
           u"a "
           "new logbook file in the setup."_s.arg(receptionCount(added))
               .arg(log.room());
}

QString importReport(const ImportTally &tally)
{
    QStringList lines {u"Added: %1"_s.arg(tally.added), u"Completed: %1"_s.arg(tally.completed),
        u"Already there: %1"_s.arg(tally.alreadyThere), u"Refused: %1"_s.arg(tally.refused)};
    if (tally.leftOut > 0) {
        lines += u"Left out: %1"_s.arg(tally.leftOut);
    }
    if (tally.lettersLost > 0) {
        lines +=
            letters(tally.lettersLost) + u" not in the code page of the log and came in as it has them."_s;
    }
    return lines.join(u'\n');
}

} // namespace quillon
