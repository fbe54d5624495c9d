#pragma once

#include <QFile>
#include <QTemporaryFile>

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include <unistd.h>

/// What goes to standard output while it lives, to be read while other threads write; a test that fails
/// meanwhile leaves the console as it was.
class CapturedConsole
{
public:
    CapturedConsole()
    {
        std::fflush(stdout);
        [[maybe_unused]] const bool isOpen = m_file.open();
        ::dup2(m_file.handle(), STDOUT_FILENO);
    }
    ~CapturedConsole()
    {
        const std::string text = output();
        ::dup2(m_previous, STDOUT_FILENO);
        ::close(m_previous);
        // What the test says about its failure is in it as well.
        if (testing::Test::HasFailure())
            std::fputs(text.c_str(), stdout);
    }
    CapturedConsole(const CapturedConsole &) = delete;
    CapturedConsole &operator=(const CapturedConsole &) = delete;

    /// All that has been written so far.
    const std::string &output()
    {
        std::fflush(stdout);
        QFile file(m_file.fileName());
        if (file.open(QIODevice::ReadOnly))
            m_output = file.readAll().toStdString();
        return m_output;
    }

private:
    const int m_previous = ::dup(STDOUT_FILENO);
    QTemporaryFile m_file;
    std::string m_output;
};
