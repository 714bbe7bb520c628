#include "ledger.h"

#include "toldcalls.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>

#include <algorithm>
#include <optional>

namespace quillon::soak {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype piecesOfALine = 13;
constexpr qsizetype notesPiece = 6;
constexpr qsizetype namePiece = 7;

// Of a folder that a program, when it was killed, was about to give its name.
bool isShelter(const QByteArray &path)
{
    return path.contains("/.quillon-");
}

} // namespace

Ledger::Ledger(const QString &root)
    : m_root(root)
{
    for (const QByteArray &line : files().value(QFile::encodeName(root + u"/log/RDSLog.log"_s)).split('\n')) {
        const QByteArrayList pieces = line.split('|');
        if (pieces.size() == piecesOfALine) {
            m_sure.insert(
                pieces.at(namePiece), {pieces.at(0) + '|' + pieces.at(1) + '|', pieces.at(notesPiece)});
        }
    }
    adopt();
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
    for (const QString &folder : {u"log"_s, u"backups"_s, u"out"_s}) {
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
        m_legal.insert(path, {hashOf(bytes)});
        if (path.endsWith("/autoupdate.log")) {
            m_growing.insert(path, bytes);
        }
    }
}

void Ledger::keep(const Intent &intent)
{
    if (intent.kind == '-') {
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
        m_started = word(1).toInt();
        m_messages = word(2);
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
    case 'D':
        for (const Intent &intent : m_intents) {
            keep(intent);
        }
        m_intents.clear();
        break;
    case 'W':
        if (!m_legal.contains(word(1))) {
            m_legal.insert(word(1), {QByteArray()});
        }
        m_legal[word(1)] += word(2);
        break;
    case 'Y':
        m_legal[word(1)] = {m_legal.value(word(1)).value(m_legal.value(word(1)).size() - 1)};
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

int Ledger::onDisk() const
{
    return static_cast<int>(files().value(QFile::encodeName(m_root + u"/log/RDSLog.log"_s)).count('\n'));
}

QStringList Ledger::problems()
{
    const auto now = files();
    QStringList problems = logProblems(now.value(QFile::encodeName(m_root + u"/log/RDSLog.log"_s)));
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
        } else if (m_hidden.contains(path) || isShelter(path)) {
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

QStringList Ledger::logProblems(const QByteArray &log)
{
    QStringList problems;
    if (!log.isEmpty() && !log.endsWith("\r\n")) {
        problems += u"the log ends in the middle of a line"_s;
    }
    QHash<QByteArray, Reception> there;
    for (const QByteArray &line : log.trimmed().split('\n')) {
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
        const bool happened = intent.kind == '+' ? is
            : intent.kind == '-'                 ? !is
                                 : is && there.value(intent.name).note == intent.reception.note;
        if (happened) {
            keep(intent);
        }
    }
    for (auto one = m_sure.begin(); one != m_sure.end(); ++one) {
        const Reception is = there.take(one.key());
        if (is.start != one->start || is.note != one->note) {
            problems += u"the reception %1 is lost or changed"_s.arg(QString::fromLatin1(one.key()));
        }
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
