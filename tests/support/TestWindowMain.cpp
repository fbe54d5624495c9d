#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QRasterWindow>
#include <QSocketNotifier>

#include <unistd.h>

#include <list>

// A program with windows, for tests of compositors: test_window <application id> <descriptor>. The descriptor
// is a socket, over which it takes commands and tells what happens to its windows, line by line. It ends with
// the socket.

namespace
{

/// What Wayland's key codes are above those of evdev, as X11's are.
constexpr quint32 XkbOffset = 8;

class Teller
{
public:
    explicit Teller(int descriptor)
        : m_descriptor(descriptor)
    {
    }

    void tell(const QByteArray &line) const
    {
        const QByteArray bytes = line + '\n';
        [[maybe_unused]] const ssize_t count =
            ::write(m_descriptor, bytes.constData(), static_cast<size_t>(bytes.size()));
    }

private:
    int m_descriptor;
};

class Window : public QRasterWindow
{
public:
    explicit Window(const Teller &teller)
        : m_teller(teller)
    {
        resize(300, 200);
    }

protected:
    void focusInEvent(QFocusEvent *) override { m_teller.tell("focus"); }
    void focusOutEvent(QFocusEvent *) override { m_teller.tell("blur"); }
    void keyPressEvent(QKeyEvent *event) override { tellKey("press", *event); }
    void keyReleaseEvent(QKeyEvent *event) override { tellKey("release", *event); }
    void paintEvent(QPaintEvent *) override { QPainter(this).fillRect(0, 0, width(), height(), Qt::gray); }

private:
    void tellKey(const char *motion, const QKeyEvent &event) const
    {
        const int modifiers = event.modifiers().toInt();
        m_teller.tell(QByteArray(motion) + ' ' + QByteArray::number(event.nativeScanCode() - XkbOffset) +
            ' ' + QByteArray::number(modifiers));
    }

    const Teller &m_teller;
};

class Program
{
public:
    explicit Program(int descriptor)
        : m_descriptor(descriptor)
        , m_teller(descriptor)
        , m_commands(descriptor, QSocketNotifier::Read)
    {
        QObject::connect(&m_commands, &QSocketNotifier::activated, &m_commands, [this] { read(); });
        m_teller.tell("process " + QByteArray::number(::getpid()));
    }

private:
    void read()
    {
        QByteArray bytes(4096, Qt::Uninitialized);
        const ssize_t count = ::read(m_descriptor, bytes.data(), static_cast<size_t>(bytes.size()));
        if (count <= 0) {
            m_commands.setEnabled(false);
            QGuiApplication::exit();
            return;
        }
        m_pending += bytes.left(count);
        for (qsizetype end = 0; (end = m_pending.indexOf('\n')) >= 0;) {
            const QByteArray line = m_pending.left(end);
            m_pending.remove(0, end + 1);
            carryOut(line);
        }
    }

    void carryOut(const QByteArray &line)
    {
        if (line == "open") {
            m_windows.emplace_back(m_teller).show();
        } else if (line == "close" && !m_windows.empty()) {
            m_windows.pop_back();
        } else if (line.startsWith("copy ")) {
            QGuiApplication::clipboard()->setText(QString::fromUtf8(line.mid(5)));
        }
    }

    const int m_descriptor;
    const Teller m_teller;
    QSocketNotifier m_commands;
    QByteArray m_pending;
    std::list<Window> m_windows;
};

} // namespace

int main(int argumentCount, char **arguments)
{
    if (argumentCount != 3)
        return 1;
    qputenv("QT_QPA_PLATFORM", "wayland");
    qputenv("QT_WAYLAND_DISABLE_WINDOWDECORATION", "1");
    QGuiApplication application(argumentCount, arguments);
    QGuiApplication::setDesktopFileName(QString::fromUtf8(arguments[1]));
    QGuiApplication::setQuitOnLastWindowClosed(false);
    const Program program(QByteArray(arguments[2]).toInt());
    return QGuiApplication::exec();
}
