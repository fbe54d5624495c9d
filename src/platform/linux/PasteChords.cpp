#include "platform/linux/PasteChords.h"

#include <QFile>

#include <array>
#include <optional>

namespace
{

struct Program {
    QLatin1String name;
    PasteChord chord;
};

// Names of desktop ids, window classes and executables. Programs written in a script language are named by
// their class, since their executable is the interpreter.
constexpr std::array Programs = {
    // Terminals that take Ctrl+Shift+V
    Program{QLatin1String("alacritty"), PasteChord::ControlShiftV},
    Program{QLatin1String("blackbox"), PasteChord::ControlShiftV},
    Program{QLatin1String("contour"), PasteChord::ControlShiftV},
    Program{QLatin1String("cool-retro-term"), PasteChord::ControlShiftV},
    Program{QLatin1String("deepin-terminal"), PasteChord::ControlShiftV},
    Program{QLatin1String("foot"), PasteChord::ControlShiftV},
    Program{QLatin1String("footclient"), PasteChord::ControlShiftV},
    Program{QLatin1String("ghostty"), PasteChord::ControlShiftV},
    Program{QLatin1String("gnome-terminal"), PasteChord::ControlShiftV},
    Program{QLatin1String("gnome-terminal-server"), PasteChord::ControlShiftV},
    Program{QLatin1String("guake"), PasteChord::ControlShiftV},
    Program{QLatin1String("hyper"), PasteChord::ControlShiftV},
    Program{QLatin1String("io.elementary.terminal"), PasteChord::ControlShiftV},
    Program{QLatin1String("kgx"), PasteChord::ControlShiftV},
    Program{QLatin1String("kitty"), PasteChord::ControlShiftV},
    Program{QLatin1String("konsole"), PasteChord::ControlShiftV},
    Program{QLatin1String("lxterminal"), PasteChord::ControlShiftV},
    Program{QLatin1String("mate-terminal"), PasteChord::ControlShiftV},
    Program{QLatin1String("org.gnome.Console"), PasteChord::ControlShiftV},
    Program{QLatin1String("org.gnome.Terminal"), PasteChord::ControlShiftV},
    Program{QLatin1String("pantheon-terminal"), PasteChord::ControlShiftV},
    Program{QLatin1String("ptyxis"), PasteChord::ControlShiftV},
    Program{QLatin1String("qterminal"), PasteChord::ControlShiftV},
    Program{QLatin1String("rio"), PasteChord::ControlShiftV},
    Program{QLatin1String("roxterm"), PasteChord::ControlShiftV},
    Program{QLatin1String("sakura"), PasteChord::ControlShiftV},
    Program{QLatin1String("st"), PasteChord::ControlShiftV},
    Program{QLatin1String("st-256color"), PasteChord::ControlShiftV},
    Program{QLatin1String("tabby"), PasteChord::ControlShiftV},
    Program{QLatin1String("terminator"), PasteChord::ControlShiftV},
    Program{QLatin1String("terminology"), PasteChord::ControlShiftV},
    Program{QLatin1String("termite"), PasteChord::ControlShiftV},
    Program{QLatin1String("tilda"), PasteChord::ControlShiftV},
    Program{QLatin1String("tilix"), PasteChord::ControlShiftV},
    Program{QLatin1String("wezterm"), PasteChord::ControlShiftV},
    Program{QLatin1String("wezterm-gui"), PasteChord::ControlShiftV},
    Program{QLatin1String("xfce4-terminal"), PasteChord::ControlShiftV},
    Program{QLatin1String("yakuake"), PasteChord::ControlShiftV},
    // Terminals that take Shift+Insert and paste PRIMARY
    Program{QLatin1String("aterm"), PasteChord::ShiftInsert},
    Program{QLatin1String("debian-uxterm"), PasteChord::ShiftInsert},
    Program{QLatin1String("debian-xterm"), PasteChord::ShiftInsert},
    Program{QLatin1String("eterm"), PasteChord::ShiftInsert},
    Program{QLatin1String("koi8rxterm"), PasteChord::ShiftInsert},
    Program{QLatin1String("lxterm"), PasteChord::ShiftInsert},
    Program{QLatin1String("mlterm"), PasteChord::ShiftInsert},
    Program{QLatin1String("rxvt"), PasteChord::ShiftInsert},
    Program{QLatin1String("rxvt-unicode"), PasteChord::ShiftInsert},
    Program{QLatin1String("urxvt"), PasteChord::ShiftInsert},
    Program{QLatin1String("urxvtd"), PasteChord::ShiftInsert},
    Program{QLatin1String("uxterm"), PasteChord::ShiftInsert},
    Program{QLatin1String("xterm"), PasteChord::ShiftInsert},
    // Editors in which Ctrl+V is a command of its own
    Program{QLatin1String("emacs"), PasteChord::ShiftInsert},
    Program{QLatin1String("emacs-gtk"), PasteChord::ShiftInsert},
    Program{QLatin1String("gvim"), PasteChord::ShiftInsert},
    Program{QLatin1String("vim.gtk3"), PasteChord::ShiftInsert},
};

std::optional<PasteChord> chordNamed(QStringView name)
{
    for (const Program &program : Programs) {
        if (name.compare(program.name, Qt::CaseInsensitive) == 0)
            return program.chord;
    }
    return std::nullopt;
}

} // namespace

PasteChord pasteChord(const QString &identifier, const QString &executable)
{
    const QStringView lastPart = QStringView(identifier).mid(identifier.lastIndexOf(QLatin1Char('.')) + 1);
    for (const QStringView name : {QStringView(identifier), lastPart, QStringView(executable)}) {
        if (const auto chord = chordNamed(name))
            return *chord;
    }
    return PasteChord::ControlV;
}

QString executableName(qint64 processIdentifier)
{
    if (processIdentifier <= 0)
        return {};
    const QString target = QFile::symLinkTarget(QStringLiteral("/proc/%1/exe").arg(processIdentifier));
    QString name = target.mid(target.lastIndexOf(QLatin1Char('/')) + 1);
    // What the kernel appends while an update has replaced the file of a running program.
    const QLatin1String replaced(" (deleted)");
    if (name.endsWith(replaced))
        name.chop(replaced.size());
    return name;
}
