#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QFile>
#include <QString>

namespace quillon::soak {

/// What the user in the program is told from outside: one variable of the environment.
struct Orders
{
    QString root; ///< the folder of the case
    int pipe = -1; ///< where to tell of the work
    int first = 0; ///< the number of the first reception
    quint32 seed = 0;
    int call = 0; ///< the one with which to die, from 1; 0 for none
    int moment = 0; ///< before, half-way or after, as ToldCalls has it

    static constexpr const char *name = "QUILLON_SOAK";

    [[nodiscard]] QByteArray variable() const
    {
        const QByteArrayList words {QByteArray::number(pipe), QByteArray::number(first),
            QByteArray::number(seed), QByteArray::number(call), QByteArray::number(moment),
            QFile::encodeName(root)};
        return name + ('=' + words.join(','));
    }
    /// The orders that the value of the variable holds.
    static Orders read(const QByteArray &value)
    {
        const QByteArrayList words = value.split(',');
        constexpr qsizetype numbers = 5;
        return {QFile::decodeName(words.mid(numbers).join(',')), words.value(0).toInt(),
            words.value(1).toInt(), words.value(2).toUInt(), words.value(3).toInt(), words.value(4).toInt()};
    }
};

} // namespace quillon::soak
