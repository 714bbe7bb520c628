#pragma once

#include <QCommandLineParser>
#include <QString>

#include <optional>

namespace quillon {

/// What the words behind the program's name ask for.
class CommandLine
{
public:
    CommandLine();

    /// Answers --help, --version, an option that does not exist and a surplus argument; the exit code, or
    /// nothing when the program is to start. Needs no display. `argv` stays as it is.
    [[nodiscard]] std::optional<int> answered(int argc, char *argv[]);

    /// The value of --directory, empty when not given. `arguments` are those that the toolkit has left.
    [[nodiscard]] QString directory(const QStringList &arguments);
    /// The value of --settings, empty when not given. To be called after directory().
    [[nodiscard]] QString settings() const { return m_parser.value(m_settings); }

private:
    QCommandLineParser m_parser;
    QCommandLineOption m_help;
    QCommandLineOption m_version;
    QCommandLineOption m_directory;
    QCommandLineOption m_settings;
};

/// Ends the program with a clear sentence, in place of an abort, when the toolkit finds no display. Counts as
/// long as it lives.
class DisplayGuard
{
public:
    DisplayGuard();
    ~DisplayGuard();
    DisplayGuard(const DisplayGuard &) = delete;
    DisplayGuard &operator=(const DisplayGuard &) = delete;
};

} // namespace quillon
