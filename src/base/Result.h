#pragma once

#include <QString>

#include <utility>
#include <variant>

/// Why a fallible call failed, in one line that may go into a diagnostic: it never holds clip text.
struct Error {
    QString description;
};

/// The outcome of a fallible call: a value, which may well be empty, or an error.
template<class T>
class [[nodiscard]] Result
{
public:
    Result(T value)
        : m_outcome(std::in_place_index<0>, std::move(value))
    {
    }
    Result(Error error)
        : m_outcome(std::in_place_index<1>, std::move(error))
    {
    }

    explicit operator bool() const { return m_outcome.index() == 0; }

    /// The value; the call must have succeeded.
    const T &value() const & { return std::get<0>(m_outcome); }
    T &value() & { return std::get<0>(m_outcome); }
    T &&value() && { return std::get<0>(std::move(m_outcome)); }

    /// The error; the call must have failed.
    const Error &error() const { return std::get<1>(m_outcome); }

private:
    std::variant<T, Error> m_outcome;
};

/// The value of a call that succeeded with nothing to tell.
struct Success {
};
