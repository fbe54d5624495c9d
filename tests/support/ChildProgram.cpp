#include "support/ChildProgram.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <utility>
#include <vector>

namespace
{

bool isReadable(int descriptor, int milliseconds)
{
    pollfd polled{descriptor, POLLIN, 0};
    return ::poll(&polled, 1, milliseconds) > 0;
}

} // namespace

ChildProgram::ChildProgram(const QByteArrayList &commandLine, Output output)
{
    // A program that ends before it has read everything does not end the test.
    ::signal(SIGPIPE, SIG_IGN);
    std::array<int, 2> input{};
    std::array<int, 2> written{};
    if (::pipe2(input.data(), O_CLOEXEC) != 0 || ::pipe2(written.data(), O_CLOEXEC) != 0)
        return;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, input[0], STDIN_FILENO);
    if (output == Output::Piped)
        posix_spawn_file_actions_adddup2(&actions, written[1], STDOUT_FILENO);
    else
        posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    QByteArrayList words = commandLine;
    std::vector<char *> arguments;
    for (QByteArray &word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    if (::posix_spawnp(&m_process, arguments.front(), &actions, nullptr, arguments.data(), environ) != 0)
        m_process = 0;
    posix_spawn_file_actions_destroy(&actions);
    ::close(input[0]);
    ::close(written[1]);
    m_input = input[1];
    m_output = written[0];
}

ChildProgram::~ChildProgram()
{
    closeInput();
    if (m_process > 0) {
        ::kill(m_process, SIGTERM);
        const int handle = static_cast<int>(::syscall(SYS_pidfd_open, m_process, 0));
        if (!isReadable(handle, 5000))
            ::kill(m_process, SIGKILL);
        ::close(handle);
        ::waitpid(m_process, nullptr, 0);
    }
    ::close(m_output);
}

void ChildProgram::writeAll(const QByteArray &input)
{
    for (qsizetype at = 0; at < input.size();) {
        const ssize_t count =
            ::write(m_input, input.constData() + at, static_cast<size_t>(input.size() - at));
        if (count <= 0)
            break;
        at += count;
    }
    closeInput();
}

QByteArray ChildProgram::readLine()
{
    QByteArray line;
    char byte = 0;
    while (isReadable(m_output, 10000) && ::read(m_output, &byte, 1) == 1 && byte != '\n')
        line.append(byte);
    return line;
}

QByteArray ChildProgram::readAll()
{
    QByteArray bytes;
    std::vector<char> buffer(65536);
    for (ssize_t count = 0; (count = ::read(m_output, buffer.data(), buffer.size())) > 0;)
        bytes.append(buffer.data(), count);
    return bytes;
}

int ChildProgram::waitForExit()
{
    int status = 0;
    const bool hasEnded = ::waitpid(std::exchange(m_process, 0), &status, 0) > 0;
    return hasEnded && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

void ChildProgram::closeInput()
{
    if (m_input >= 0)
        ::close(std::exchange(m_input, -1));
}
