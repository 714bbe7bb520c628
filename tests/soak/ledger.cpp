#include "ledger.h"

#include "told.h"
#include "toldcalls.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>

#include <algorithm>

namespace quillon::soak {

using namespace Qt::StringLiterals;

namespace {

constexpr QByteArrayView growingName = "/autoupdate.log";

QByteArray folderOf(const QByteArray &path)
{
    return path.first(path.lastIndexOf('/') + 1);
}

// The name that a file has on its way to that path.
QByteArray hiddenNameOf(const QByteArray &path)
{
    const QByteArray folder = folderOf(path);
    return folder + '.' + path.sliced(folder.size()) + ".new";
}

// A reception of which these fields are known.
QByteArrayList whole(QByteArrayList fields)
{
    fields.resize(Field::count, Teller::anything.toByteArray());
    return fields;
}

bool fits(const QByteArray &is, const QByteArray &kept)
{
    return kept == Teller::anything || kept == is || (kept == sentMark && is.contains(sentMark));
}

bool fits(const QByteArrayList &is, const QByteArrayList &kept)
{
    return std::ranges::equal(
        is, kept, [](const QByteArray &one, const QByteArray &other) { return fits(one, other); });
}

QHash<QByteArray, QByteArrayList> receptionsIn(const QByteArray &log)
{
    QHash<QByteArray, QByteArrayList> receptions;
    const QByteArrayList lines = log.split('\n');
    for (const QByteArray &line : lines) {
        const QByteArrayList pieces = line.trimmed().split('|');
        if (pieces.size() == Field::count) {
            receptions.insert(pieces.at(Field::RdsName), pieces);
        }
    }
    return receptions;
}

// What the program may remove: files on their way, backups, and pages and pictures of itself that a later
// export does not make.
bool mayGo(const QByteArray &path)
{
    return path.sliced(folderOf(path).size()).startsWith('.') || path.endsWith(".zip")
        || folderOf(path).endsWith("/html/") || path.endsWith("/logbook.tmp");
}

// In these folders a writing first removes what others have left, of whichever file it was.
bool isSweptAtOnce(const QByteArray &folder)
{
    return folder.contains("/backups/") || folder.endsWith("/html/");
}

} // namespace

QMap<QByteArray, QByteArray> filesOfCase(const QString &root)
{
    QMap<QByteArray, QByteArray> files;
    const auto take = [&](const QString &path) {
        QFile file(path);
        if (file.open(QIODevice::ReadOnly)) {
            files.insert(QFile::encodeName(path), file.readAll());
        }
    };
    for (const QString &folder : {u"log"_s, u"state"_s, u"out"_s}) {
        QDirIterator walk(root + u'/' + folder,
            QDir::Files | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
        while (walk.hasNext()) {
            take(walk.next());
        }
    }
    take(root + u"/look/receiver.passwords"_s);
    take(root + u"/look/.receiver.passwords.new"_s);
    return files;
}

Ledger::Ledger(const QString &root)
    : m_root(root)
{
    const auto now = filesOfCase(m_root);
    m_sure = receptionsIn(now.value(inLog("RDSLog.log")));
    for (const auto &[path, bytes] : now.asKeyValueRange()) {
        if (path.endsWith(".zip")) {
            m_backups.insert(path, m_sure);
        }
    }
    adopt();
}

QByteArray Ledger::inLog(const char *name) const
{
    return QFile::encodeName(m_root + u"/log/"_s) + name;
}

void Ledger::restart()
{
    m_started = -1;
    m_messages.clear();
}

void Ledger::adopt()
{
    m_legal.clear();
    const auto now = filesOfCase(m_root);
    for (const auto &[path, bytes] : now.asKeyValueRange()) {
        if (!m_hidden.contains(path)) {
            m_legal.insert(path, {hashOf(bytes)});
        }
        if (path.endsWith(growingName)) {
            m_growing.insert(path, bytes);
        }
    }
    m_hidden.removeIf([&](const QByteArray &path) { return !now.contains(path); });
}

void Ledger::keep(const Intent &intent)
{
    if (intent.kind == 'R') {
        m_sure = m_backups.value(intent.name);
    } else if (intent.kind == '-') {
        m_sure.remove(intent.name);
    } else if (intent.kind == '+') {
        m_sure.insert(intent.name, intent.reception);
    } else if (m_sure.contains(intent.name)) {
        m_sure[intent.name][intent.field] = intent.text;
    }
}

// What a command may change is whatever is seen next. What was sent stays so.
void Ledger::forget(const QByteArrayList &fields)
{
    for (Reception &reception : m_sure) {
        for (const QByteArray &field : fields) {
            const int place = field.toInt();
            const bool isSent = place == Field::FMList && reception.at(place).contains(sentMark);
            if (!isSent) {
                reception.replace(place, Teller::anything.toByteArray());
            }
        }
    }
}

void Ledger::take(const QByteArray &line)
{
    const QByteArrayList words = line.trimmed().split('\t');
    const auto word = [&](qsizetype i) { return words.value(i); };
    switch (line.isEmpty() ? '\0' : line.front()) {
    case 'S':
        started(word(1), word(2));
        break;
    case 'C':
        m_command = word(1);
        break;
    case 'E':
        m_errors += word(1);
        break;
    case '+':
        m_intents.push_back({'+', word(1), whole(word(2).split('|')), 0, {}});
        break;
    case '-':
    case 'R':
        m_intents.push_back({line.front(), word(1), {}, 0, {}});
        break;
    case '=':
        m_intents.push_back({'=', word(1), {}, word(2).toInt(), word(3)});
        break;
    case 'F':
        forget(words.sliced(1));
        break;
    case 'D':
        for (const Intent &intent : m_intents) {
            keep(intent);
        }
        m_intents.clear();
        ++m_confirmed;
        break;
    case 'W':
        replacing(word(1), word(2));
        break;
    case 'Y':
        replaced(word(1));
        break;
    case 'N':
        m_hidden += word(1);
        break;
    case 'A':
        appending(word(1));
        break;
    default:
        break;
    }
}

// A start removes what a kill has left of the files that it reads.
void Ledger::started(const QByteArray &receptions, const QByteArray &messages)
{
    m_started = receptions.toInt();
    m_messages = messages;
    for (const char *name : {"RDSLog.log", "tx.lst", "LOGBOOK.INI"}) {
        m_hidden.remove(hiddenNameOf(inLog(name)));
    }
    // No later copy has the name of one that was not finished.
    m_hidden.removeIf([&](const QByteArray &path) { return path.endsWith(".bak.new"); });
}

void Ledger::replacing(const QByteArray &path, const QByteArray &hash)
{
    if (hash.isEmpty() && !mayGo(path)) {
        return;
    }
    if (!m_legal.contains(path)) {
        m_legal.insert(path, {QByteArray()});
    }
    m_legal[path] += hash;
    if (path.endsWith(".zip") && !hash.isEmpty()) {
        m_backups.insert(path, m_sure);
    }
}

// The record of the automatic search grows; any other file is only made to be there.
void Ledger::appending(const QByteArray &path)
{
    if (path.endsWith(growingName)) {
        m_growing.insert(path, m_growing.value(path));
    } else if (!m_legal.contains(path)) {
        m_legal.insert(path, {QByteArray(), hashOf({})});
    }
}

// With the file also that is gone which an earlier writing of it had left.
void Ledger::replaced(const QByteArray &path)
{
    m_legal[path] = {m_legal.value(path).value(m_legal.value(path).size() - 1)};
    m_hidden.remove(path);
    m_hidden.remove(hiddenNameOf(path));
    if (const QByteArray folder = folderOf(path); isSweptAtOnce(folder)) {
        m_hidden.removeIf([&](const QByteArray &hidden) { return folderOf(hidden) == folder; });
    }
}

int Ledger::onDisk() const
{
    return static_cast<int>(filesOfCase(m_root).value(inLog("RDSLog.log")).count('\n'));
}

QStringList Ledger::problems()
{
    const auto now = filesOfCase(m_root);
    QStringList problems = logProblems(now.value(inLog("RDSLog.log")));
    problems += fileProblems(now);
    adopt();
    return problems;
}

QStringList Ledger::fileProblems(const QMap<QByteArray, QByteArray> &now) const
{
    QStringList problems;
    for (const auto &[path, bytes] : now.asKeyValueRange()) {
        const auto growing = m_growing.constFind(path);
        if (growing != m_growing.cend()) {
            if (!bytes.startsWith(*growing)) {
                problems += QString::fromUtf8(path) + u": what stood in it is lost"_s;
            }
        } else if (m_hidden.contains(path)) {
            continue;
        } else if (!m_legal.contains(path)) {
            problems += QString::fromUtf8(path) + u": nobody wrote such a file"_s;
        } else if (!m_legal.value(path).contains(hashOf(bytes))) {
            problems += QString::fromUtf8(path) + u": neither the old file nor the new one"_s;
        }
    }
    for (const auto &[path, hashes] : m_legal.asKeyValueRange()) {
        if (!now.contains(path) && !hashes.contains(QByteArray()) && !m_hidden.contains(path)) {
            problems += QString::fromUtf8(path) + u": is gone"_s;
        }
    }
    return problems;
}

// What was not confirmed may have happened, or not.
bool Ledger::hasHappened(const Intent &intent, const Receptions &there) const
{
    const auto is = there.constFind(intent.name);
    switch (intent.kind) {
    case 'R': {
        const Receptions kept = m_backups.value(intent.name);
        return there.size() == kept.size()
            && std::ranges::all_of(kept.keyBegin(), kept.keyEnd(),
                [&](const QByteArray &name) { return fits(there.value(name), kept.value(name)); });
    }
    case '+':
        return is != there.cend();
    case '-':
        return is == there.cend();
    default:
        return is != there.cend() && fits(is->at(intent.field), intent.text);
    }
}

QStringList Ledger::logProblems(const QByteArray &log)
{
    QStringList problems;
    if (!log.isEmpty() && !log.endsWith("\r\n")) {
        problems += u"the log ends in the middle of a line"_s;
    }
    // Everything may have been deleted.
    const QByteArrayList lines = log.isEmpty() ? QByteArrayList() : log.trimmed().split('\n');
    for (const QByteArray &line : lines) {
        if (line.count('|') != Field::count - 1) {
            problems += u"a line of the log is none: "_s + QString::fromLatin1(line);
        }
    }
    Receptions there = receptionsIn(log);
    if (there.size() != lines.size()) {
        problems += u"the log has %1 lines of %2 receptions"_s.arg(lines.size()).arg(there.size());
    }
    for (const Intent &intent : m_intents) {
        if (hasHappened(intent, there)) {
            keep(intent);
        }
    }
    for (auto one = m_sure.begin(); one != m_sure.end(); ++one) {
        const Reception is = there.take(one.key());
        if (!fits(is, *one)) {
            problems += u"the reception %1 is lost or changed: \"%2\" instead of \"%3\""_s.arg(
                QString::fromLatin1(one.key()), QString::fromLatin1(is.join('|')),
                QString::fromLatin1(one->join('|')));
        }
        // From now on it is as it is seen.
        *one = is.isEmpty() ? *one : is;
    }
    // Undone and made again within one command: both are known.
    for (const Intent &intent : m_intents) {
        there.remove(intent.name);
    }
    for (auto one = there.begin(); one != there.end(); ++one) {
        problems += u"nobody stored the reception "_s + QString::fromLatin1(one.key());
    }
    m_intents.clear();
    return problems;
}

} // namespace quillon::soak
