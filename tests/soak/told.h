#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QByteArrayView>
#include <QList>

#include <functional>

namespace quillon::soak {

/// Places of fields in a line of the log.
struct Field
{
    enum Place : int {
        PiCode,
        DateTime,
        Prop,
        Freq,
        Transmitter,
        Country,
        Notes,
        RdsName,
        Power,
        Dist,
        FMList,
        Uid,
        Empty, ///< behind the last "|"
        count
    };
};

/// What FMList holds of a reception that was sent there, whatever else it holds.
inline constexpr QByteArrayView sentMark = "fml=sent";

/// What a case says of itself while it runs, one line each, so that whoever outlives it knows what has to be
/// on the disk.
class Teller
{
public:
    using Sink = std::function<void(const QByteArray &line)>;
    explicit Teller(Sink sink)
        : m_sink(std::move(sink))
    {
    }

    /// The program has read its files: so many receptions, and what it had to say.
    void started(int receptions, const QByteArray &messages)
    {
        say({"S", QByteArray::number(receptions), messages});
    }
    void command(const QByteArray &name) { say({"C", name}); }
    /// Stands for a field of which nothing is said.
    static constexpr QByteArrayView anything = "*";

    /// A reception is about to be stored: its fields as they are to stand in its line. Of those behind the
    /// last one nothing is said.
    void adding(const QByteArrayList &fields) { say({"+", fields.value(Field::RdsName), fields.join('|')}); }
    void removing(const QByteArray &name) { say({"-", name}); }
    /// A field of the reception is about to become this text.
    void setting(const QByteArray &name, int field, const QByteArray &text)
    {
        say({"=", name, QByteArray::number(field), text});
    }
    /// These fields of any reception may change from now on.
    void changing(const QList<int> &fields)
    {
        QByteArrayList words {"F"};
        for (const int field : fields) {
            words += QByteArray::number(field);
        }
        say(words);
    }
    /// The log is about to become that of this backup.
    void restoring(const QByteArray &path) { say({"R", path}); }
    /// The user has been told that it is done.
    void done() { say({"D"}); }
    /// The program has told an error.
    void failed(const QByteArray &text) { say({"E", text}); }

    /// A file on its way to the disk is about to get this hidden name.
    void naming(const QByteArray &path) { say({"N", path}); }
    /// The file of this path is about to become another, or to go.
    void replacing(const QByteArray &path, const QByteArray &hash) { say({"W", path, hash}); }
    /// The file has become what was told last.
    void replaced(const QByteArray &path) { say({"Y", path}); }
    /// Something is about to be added to the end of the file.
    void appending(const QByteArray &path) { say({"A", path}); }

private:
    void say(QByteArrayList words)
    {
        for (QByteArray &word : words) {
            word.replace('\n', ' ').replace('\t', ' ');
            word.truncate(mostOfAWord);
        }
        m_sink(words.join('\t') + '\n');
    }

    // A line goes through a pipe whole or not at all.
    static constexpr qsizetype mostOfAWord = 900;

    Sink m_sink;
};

} // namespace quillon::soak
