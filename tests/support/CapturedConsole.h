#pragma once

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

/// What goes to standard output while it lives; a test that fails meanwhile leaves the console as it was.
class CapturedConsole
{
public:
    CapturedConsole() { testing::internal::CaptureStdout(); }
    ~CapturedConsole()
    {
        m_output += testing::internal::GetCapturedStdout();
        // What the test says about its failure is in it as well.
        if (testing::Test::HasFailure())
            std::fputs(m_output.c_str(), stdout);
    }
    CapturedConsole(const CapturedConsole &) = delete;
    CapturedConsole &operator=(const CapturedConsole &) = delete;

    /// All that has been written so far.
    const std::string &output()
    {
        m_output += testing::internal::GetCapturedStdout();
        testing::internal::CaptureStdout();
        return m_output;
    }

private:
    std::string m_output;
};
