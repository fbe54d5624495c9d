#include "contract/PasteboardContract.h"

#include "fakes/FakePasteboard.h"
#include "platform/linux/ClipboardTargets.h"
#include "platform/wayland/WaylandBackends.h"
#include "platform/x11/X11Backends.h"
#include "support/ClipboardOwner.h"
#include "support/Compositor.h"
#include "support/SelectionOwner.h"
#include "support/Waiting.h"
#include "support/XServer.h"

namespace
{

class FakeWorld : public PasteboardWorld
{
public:
    Pasteboard &pasteboard() override { return m_pasteboard; }
    void copy(const Content &content) override { m_pasteboard.copy(content); }
    void copySecret(const Content &content) override { m_pasteboard.copySecret(content); }

private:
    FakePasteboard m_pasteboard;
};

QByteArray utf16(const QByteArray &utf8)
{
    const QString text = QString::fromUtf8(utf8);
    return QByteArray(reinterpret_cast<const char *>(text.utf16()), text.size() * 2);
}

/// What a program that copies offers, by target.
template<class Offer>
Offer offerOf(const PasteboardWorld::Content &content, const char *textTarget)
{
    Offer offer;
    const auto add = [&](PasteboardType type, const char *target) {
        if (const auto found = content.find(type); found != content.end())
            offer.emplace(target, found->second);
    };
    add(PasteboardType::String, textTarget);
    add(PasteboardType::Tiff, clipboard::Tiff);
    add(PasteboardType::Png, clipboard::Png);
    add(PasteboardType::FileUrl, clipboard::UriList);
    add(PasteboardType::Url, clipboard::UriList);
    if (const auto name = content.find(PasteboardType::UrlName); name != content.end())
        offer.emplace(clipboard::MozillaUrl, utf16(content.at(PasteboardType::Url) + "\n" + name->second));
    return offer;
}

/// A server of its own, and an owner for each copy.
class X11World : public PasteboardWorld
{
public:
    Pasteboard &pasteboard() override { return *m_pasteboard; }
    void copy(const Content &content) override
    {
        own(offerOf<SelectionOwner::Offer>(content, clipboard::Utf8String));
    }

    void copySecret(const Content &content) override
    {
        auto offer = offerOf<SelectionOwner::Offer>(content, clipboard::Utf8String);
        offer.emplace(clipboard::SecretHint, "secret");
        own(offer);
    }

private:
    /// The owners before are asked until the new one has been: a copy is what a user does, not what a race
    /// does.
    void own(const SelectionOwner::Offer &offer)
    {
        m_owners.push_back(std::make_unique<SelectionOwner>(offer));
        SelectionOwner &owner = *m_owners.back();
        owner.own();
        const qsizetype wanted = offer.contains(clipboard::SecretHint) ? 2 : 1 + qsizetype(offer.size());
        EXPECT_TRUE(waitUntil([&] { return owner.requests().size() >= wanted; }));
    }

    XServer m_server;
    std::unique_ptr<Pasteboard> m_pasteboard = platform::makeX11Pasteboard();
    std::vector<std::unique_ptr<SelectionOwner>> m_owners;
};

/// A compositor of its own, and an owner for each copy.
template<Compositor::Kind kind>
class WaylandWorld : public PasteboardWorld
{
public:
    Pasteboard &pasteboard() override { return *m_pasteboard; }
    void copy(const Content &content) override
    {
        own(offerOf<ClipboardOwner::Offer>(content, clipboard::Utf8PlainText));
    }

    void copySecret(const Content &content) override
    {
        auto offer = offerOf<ClipboardOwner::Offer>(content, clipboard::Utf8PlainText);
        offer.emplace(clipboard::SecretHint, "secret");
        own(offer);
    }

private:
    void own(const ClipboardOwner::Offer &offer)
    {
        m_owners.push_back(ClipboardOwner::open());
        ClipboardOwner &owner = *m_owners.back();
        owner.own(offer);
        const qsizetype wanted = offer.contains(clipboard::SecretHint) ? 1 : qsizetype(offer.size());
        EXPECT_TRUE(waitUntil([&] { return owner.requests().size() >= wanted; }));
    }

    Compositor m_compositor{kind};
    std::unique_ptr<Pasteboard> m_pasteboard = platform::makeWaylandPasteboard();
    std::vector<std::unique_ptr<ClipboardOwner>> m_owners;
};

template<class World>
std::unique_ptr<PasteboardWorld> make()
{
    return std::make_unique<World>();
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Fake, PasteboardContract,
    ::testing::Values(PasteboardBackend{"Fake", make<FakeWorld>}),
    [](const auto &backend) { return backend.param.name; });

INSTANTIATE_TEST_SUITE_P(X11, PasteboardContract, ::testing::Values(PasteboardBackend{"X11", make<X11World>}),
    [](const auto &backend) { return backend.param.name; });

INSTANTIATE_TEST_SUITE_P(Wayland, PasteboardContract,
    ::testing::Values(PasteboardBackend{"Sway", make<WaylandWorld<Compositor::Kind::Sway>>},
        PasteboardBackend{"KWin", make<WaylandWorld<Compositor::Kind::KWin>>}),
    [](const auto &backend) { return backend.param.name; });
