#include "ledger.h"

#include "toldcalls.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>

#include <algorithm>

namespace quillon::soak {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype piecesOfALine = 13;
constexpr qsizetype notesPiece = 6;
constexpr qsizetype namePiece = 7;

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

// In these folders a writing first removes what others have left, of whichever file it was.
bool isSweptAtOnce(const QByteArray &folder)
{
    return folder.contains("/backups/") || folder.endsWith("/html/");
}

} // namespace

Ledger::Ledger(const QString &root)
    : m_root(root)
{
    const auto now = files();
    for (const QByteArray &line : now.value(inLog("RDSLog.log")).split('\n')) {
        const QByteArrayList pieces = line.split('|');
        if (pieces.size() == piecesOfALine) {
            m_sure.insert(
                pieces.at(namePiece), {pieces.at(0) + '|' + pieces.at(1) + '|', pieces.at(notesPiece)});
        }
    }
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

// Everything below the root that the program promises, by its path.
QMap<QByteArray, QByteArray> Ledger::files() const
{
    QMap<QByteArray, QByteArray> files;
    for (const QString &folder : {u"log"_s, u"state"_s, u"out"_s}) {
        QDirIterator walk(m_root + u'/' + folder,
            QDir::Files | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
        while (walk.hasNext()) {
            QFile file(walk.next());
            if (file.open(QIODevice::ReadOnly)) {
                files.insert(QFile::encodeName(walk.filePath()), file.readAll());
            }
        }
    }
    return files;
}

void Ledger::adopt()
{
    m_legal.clear();
    const auto now = files();
    for (const auto &[path, bytes] : now.asKeyValueRange()) {
        if (!m_hidden.contains(path)) {
            m_legal.insert(path, {hashOf(bytes)});
        }
        if (path.endsWith("/autoupdate.log")) {
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
    } else {
        m_sure[intent.name].note = intent.reception.note;
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
        m_intents.push_back({'+', word(1), {word(2), word(3)}});
        break;
    case '-':
        m_intents.push_back({'-', word(1), {}});
        break;
    case '=':
        m_intents.push_back({'=', word(1), {{}, word(2)}});
        break;
    case 'R':
        m_intents.push_back({'R', word(1), {}});
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
        m_growing.insert(word(1), m_growing.value(word(1)));
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
    if (!m_legal.contains(path)) {
        m_legal.insert(path, {QByteArray()});
    }
    m_legal[path] += hash;
    if (path.endsWith(".zip") && !hash.isEmpty()) {
        m_backups.insert(path, m_sure);
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
    return static_cast<int>(files().value(inLog("RDSLog.log")).count('\n'));
}

QStringList Ledger::problems()
{
    const auto now = files();
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

bool Ledger::isSame(const Receptions &there, const Receptions &kept) const
{
    return there.size() == kept.size()
        && std::ranges::all_of(kept.keyBegin(), kept.keyEnd(), [&](const QByteArray &name) {
               const Reception is = there.value(name);
               return is.start.startsWith(kept.value(name).start) && is.note == kept.value(name).note;
           });
}

QStringList Ledger::logProblems(const QByteArray &log)
{
    QStringList problems;
    if (!log.isEmpty() && !log.endsWith("\r\n")) {
        problems += u"the log ends in the middle of a line"_s;
    }
    QHash<QByteArray, Reception> there;
    // Everything may have been deleted.
    const QByteArrayList lines = log.isEmpty() ? QByteArrayList() : log.trimmed().split('\n');
    for (const QByteArray &line : lines) {
        const QByteArrayList pieces = line.trimmed().split('|');
        if (pieces.size() != piecesOfALine) {
            problems += u"a line of the log is none: "_s + QString::fromLatin1(line);
            continue;
        }
        there.insert(pieces.at(namePiece), {pieces.at(0) + '|' + pieces.at(1) + '|', pieces.at(notesPiece)});
    }
    // What was not confirmed may have happened, or not.
    for (const Intent &intent : m_intents) {
        const bool is = there.contains(intent.name);
        const bool happened = intent.kind == 'R' ? isSame(there, m_backups.value(intent.name))
            : intent.kind == '+'                 ? is
            : intent.kind == '-'                 ? !is
                                 : is && there.value(intent.name).note == intent.reception.note;
        if (happened) {
            keep(intent);
        }
    }
    for (auto one = m_sure.begin(); one != m_sure.end(); ++one) {
        const Reception is = there.take(one.key());
        if (!is.start.startsWith(one->start) || is.start.isEmpty() || is.note != one->note) {
            problems += u"the reception %1 is lost or changed"_s.arg(QString::fromLatin1(one.key()));
        }
        // From now on it is as it is seen.
        one->start = is.start;
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
