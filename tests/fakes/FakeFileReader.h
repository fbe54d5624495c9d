#pragma once

#include "base/FileReader.h"

#include <deque>

/// Files in memory. A read answers at once, or, while the file system "hangs", when the test says.
class FakeFileReader : public FileReader
{
public:
    bool isHanging = false;
    std::optional<QByteArray> bytes; ///< what every file holds

    /// Answers the oldest read that hangs.
    void answerNext()
    {
        const Done done = std::move(m_waiting.front());
        m_waiting.pop_front();
        done(bytes);
    }

    void read(const QByteArray &, qint64, Done onDone) override
    {
        if (isHanging)
            m_waiting.push_back(std::move(onDone));
        else
            onDone(bytes);
    }

private:
    std::deque<Done> m_waiting;
};
