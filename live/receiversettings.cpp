#include "live/receiversettings.h"

#include "platform/files.h"
#include "platform/runtimeerror.h"

#include <QDir>
#include <QFile>
#include <QHash>
#include <QSettings>
#include <QStandardPaths>

#include <algorithm>
#include <cerrno>
#include <sys/stat.h>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr int mostKept = 100;

QString settingsPath(const QString &folder)
{
    return filePath(folder, u"receiver.ini"_s);
}

QString passwordsPath(const QString &folder)
{
    return filePath(folder, u"receiver.passwords"_s);
}

/// The password of the source that is chosen now stands under an empty name.
using Passwords = QHash<QString, QString>;

Passwords readPasswords(const QString &folder)
{
    Passwords passwords;
    const QString path = passwordsPath(folder);
    if (!QFile::exists(path)) {
        return passwords;
    }
    const QByteArray file = readFile(path);
    for (const QByteArrayView line : splitLines(QByteArrayView(file))) {
        const qsizetype tab = line.indexOf('\t');
        if (tab >= 0) {
            const auto text = [](QByteArrayView part) {
                return QString::fromUtf8(QByteArray::fromPercentEncoding(part.toByteArray()));
            };
            passwords.insert(text(line.first(tab)), text(line.sliced(tab + 1)));
        }
    }
    return passwords;
}

QByteArray passwordLine(const QString &name, const QString &password)
{
    return name.toUtf8().toPercentEncoding() + '\t' + password.toUtf8().toPercentEncoding() + '\n';
}

void writePasswords(const QString &folder, const ReceiverSettings &settings, FileCalls &calls)
{
    QByteArray lines;
    if (!settings.last.password.isEmpty()) {
        lines += passwordLine({}, settings.last.password);
    }
    for (const KeptSource &kept : settings.kept) {
        if (!kept.settings.password.isEmpty()) {
            lines += passwordLine(kept.name, kept.settings.password);
        }
    }
    const QString path = passwordsPath(folder);
    if (!QFile::exists(path) && lines.isEmpty()) {
        return;
    }
    // The mode first, then the content, which keeps it.
    constexpr mode_t owner = 0600;
    const int file = calls.openToAppend(QFile::encodeName(path), owner);
    const bool isSet = file >= 0 && calls.setMode(file, owner) == 0;
    const int error = errno;
    const bool isClosed = file < 0 || calls.close(file) == 0;
    if (!isSet || !isClosed) {
        throw systemError(isSet ? errno : error, u"Writing "_s + path);
    }
    writeFile(path, lines, calls);
}

void readSource(QSettings &file, SourceSettings &source)
{
    const QString kind = file.value("kind"_L1).toString();
    for (int i = 0; i < sourceKinds; ++i) {
        if (kindName(static_cast<SourceKind>(i)) == kind) {
            source.kind = static_cast<SourceKind>(i);
        }
    }
    source.address = file.value("address"_L1).toString();
    source.atOnce = file.value("atOnce"_L1).toBool();
}

void writeSource(QSettings &file, const SourceSettings &source)
{
    file.setValue("kind"_L1, kindName(source.kind));
    file.setValue("address"_L1, source.address);
    file.setValue("atOnce"_L1, source.atOnce);
}

int bounded(const QSettings &file, QLatin1StringView key, int usual, int highest)
{
    bool ok = false;
    const int number = file.value(key, usual).toInt(&ok);
    return ok ? std::clamp(number, 0, highest) : usual;
}

void readRules(QSettings &file, AutoLogRules &rules)
{
    file.beginGroup("autoLog"_L1);
    rules.on = file.value("on"_L1).toBool();
    rules.earliest = bounded(file, "earliest"_L1, rules.earliest, 3600);
    rules.hold = bounded(file, "hold"_L1, rules.hold, 3600);
    rules.again = bounded(file, "again"_L1, rules.again, 1440);
    for (const QString &text : file.value("locals"_L1).toStringList()) {
        if (const auto local = readLocal(text)) {
            rules.locals.append(*local);
        }
    }
    file.endGroup();
}

void writeRules(QSettings &file, const AutoLogRules &rules)
{
    QStringList locals;
    for (const Local &local : rules.locals) {
        locals += textOf(local);
    }
    file.beginGroup("autoLog"_L1);
    file.setValue("on"_L1, rules.on);
    file.setValue("earliest"_L1, rules.earliest);
    file.setValue("hold"_L1, rules.hold);
    file.setValue("again"_L1, rules.again);
    file.setValue("locals"_L1, locals);
    file.endGroup();
}

} // namespace

QString receiverFolder()
{
    return filePath(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation), u"quillon"_s);
}

ReceiverSettings readReceiverSettings(const QString &folder)
{
    ReceiverSettings settings;
    QSettings file(settingsPath(folder), QSettings::IniFormat);
    const Passwords passwords = readPasswords(folder);
    file.beginGroup("source"_L1);
    readSource(file, settings.last);
    file.endGroup();
    settings.last.password = passwords.value(QString());
    const int kept = std::min(file.beginReadArray("kept"_L1), mostKept);
    for (int i = 0; i < kept; ++i) {
        file.setArrayIndex(i);
        KeptSource source {file.value("name"_L1).toString(), {}};
        readSource(file, source.settings);
        source.settings.password = passwords.value(source.name);
        if (!source.name.isEmpty()) {
            settings.kept.append(source);
        }
    }
    file.endArray();
    settings.connectAtStart = file.value("connectAtStart"_L1).toBool();
    settings.textAsNotes = file.value("textAsNotes"_L1).toBool();
    settings.mayTune = file.value("mayTune"_L1).toBool();
    settings.sound = file.value("sound"_L1).toBool();
    settings.notification = file.value("notification"_L1).toBool();
    readRules(file, settings.autoLog);
    return settings;
}

void writeReceiverSettings(const QString &folder, const ReceiverSettings &settings, FileCalls &calls)
{
    if (!QDir().mkpath(folder)) {
        throw RuntimeError(ErrorName::PathNotFound, u"Making the folder of the settings: %1"_s.arg(folder));
    }
    writePasswords(folder, settings, calls);
    QSettings file(settingsPath(folder), QSettings::IniFormat);
    file.clear();
    file.beginGroup("source"_L1);
    writeSource(file, settings.last);
    file.endGroup();
    file.beginWriteArray("kept"_L1, static_cast<int>(settings.kept.size()));
    for (int i = 0; i < settings.kept.size(); ++i) {
        file.setArrayIndex(i);
        file.setValue("name"_L1, settings.kept[i].name);
        writeSource(file, settings.kept[i].settings);
    }
    file.endArray();
    file.setValue("connectAtStart"_L1, settings.connectAtStart);
    file.setValue("textAsNotes"_L1, settings.textAsNotes);
    file.setValue("mayTune"_L1, settings.mayTune);
    file.setValue("sound"_L1, settings.sound);
    file.setValue("notification"_L1, settings.notification);
    writeRules(file, settings.autoLog);
    file.sync();
    if (file.status() != QSettings::NoError) {
        throw RuntimeError(
            ErrorName::PermissionDenied, u"Writing the settings of the receiver: %1"_s.arg(file.fileName()));
    }
}

} // namespace quillon
