#pragma once

#include "platform/Pasteboard.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <memory>
#include <string>

/// A pasteboard and the other programs around it, whatever they are made of.
class PasteboardWorld
{
public:
    using Content = std::map<PasteboardType, QByteArray>;

    virtual ~PasteboardWorld() = default;

    virtual Pasteboard &pasteboard() = 0;
    /// Another program copies.
    virtual void copy(const Content &content) = 0;
    /// Another program copies something that it marks as secret.
    virtual void copySecret(const Content &content) = 0;
};

/// A back end that must keep the port's contract.
struct PasteboardBackend {
    std::string name;
    std::function<std::unique_ptr<PasteboardWorld>()> makeWorld;
};

/// A test's name holds its parameter.
void PrintTo(const PasteboardBackend &backend, std::ostream *stream);

class PasteboardContract : public ::testing::TestWithParam<PasteboardBackend>
{
protected:
    PasteboardContract()
        : m_world(GetParam().makeWorld())
    {
    }

    PasteboardWorld &world() { return *m_world; }
    Pasteboard &pasteboard() { return m_world->pasteboard(); }
    /// Waits until another content is current.
    bool advances();
    /// The text of the type on the only item; nothing when there is no item.
    std::optional<QByteArray> string(PasteboardType type);

private:
    std::unique_ptr<PasteboardWorld> m_world;
};
