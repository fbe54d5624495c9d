#include "support/MessageBus.h"

#include <QFile>

#include <csignal>

namespace
{

const char *const Configuration =
    R"(<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:path=%1/bus</listen>
  <servicedir>%1</servicedir>
  <policy context="default">
    <allow send_destination="*"/>
    <allow receive_sender="*"/>
    <allow own="*"/>
  </policy>
</busconfig>
)";

void write(const QString &path, const QByteArray &text)
{
    QFile file(path);
    if (file.open(QIODevice::WriteOnly))
        file.write(text);
}

} // namespace

MessageBus::MessageBus()
{
    const QString file = m_folder.filePath(QStringLiteral("bus.conf"));
    write(file, QString::fromLatin1(Configuration).arg(m_folder.path()).toUtf8());
    m_program = std::make_unique<ChildProgram>(QByteArrayList{
        "dbus-daemon", "--nofork", "--config-file=" + file.toUtf8(), "--print-address=1", "--print-pid=1"});
    m_address = m_program->readLine();
    m_process = m_program->readLine().toInt();
}

MessageBus::~MessageBus()
{
    thaw();
}

void MessageBus::addService(const QByteArray &name, const QByteArray &commandLine)
{
    write(m_folder.filePath(QString::fromLatin1(name + ".service")),
        "[D-BUS Service]\nName=" + name + "\nExec=" + commandLine + '\n');
}

void MessageBus::freeze()
{
    if (m_process > 0)
        ::kill(m_process, SIGSTOP);
}

void MessageBus::thaw()
{
    if (m_process > 0)
        ::kill(m_process, SIGCONT);
}

void MessageBus::end()
{
    m_process = 0;
    m_program.reset();
}
