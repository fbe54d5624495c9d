#include "platform/linux/SoundContext.h"

namespace
{

constexpr uint32_t AnyNumber = 1;
constexpr const char *SoundServer = "pulse";
constexpr const char *SoundCard = "alsa";

} // namespace

void SoundContext::play(const char *event, const QByteArray &file)
{
    if (!m_context)
        m_context = openContext();
    if (!m_context)
        return;
    const int status = m_library.play(m_context.get(), AnyNumber, CA_PROP_EVENT_ID, event,
        CA_PROP_MEDIA_FILENAME, file.constData(), CA_PROP_MEDIA_ROLE, "event", CA_PROP_CANBERRA_CACHE_CONTROL,
        "permanent", nullptr);
    if (status != CA_SUCCESS)
        m_context.reset();
}

SoundContext::Context SoundContext::openContext() const
{
    ca_context *made = nullptr;
    if (!m_library.isLoaded() || m_library.createContext(&made) != CA_SUCCESS)
        return {nullptr, {&m_library}};
    Context context(made, {&m_library});
    // What the desktop's volume control says about it.
    m_library.changeProperties(made, CA_PROP_APPLICATION_NAME, "Larkspool", CA_PROP_APPLICATION_ID,
        "org.larkspool.Larkspool", CA_PROP_APPLICATION_ICON_NAME, "org.larkspool.Larkspool", nullptr);
    // By itself the library tries sound cards only where it has no part for sound servers.
    m_library.setDriver(made, SoundServer);
    if (m_library.open(made) == CA_SUCCESS)
        return context;
    SoundLibrary::silenceSoundCards();
    m_library.setDriver(made, SoundCard);
    if (m_library.open(made) == CA_SUCCESS)
        return context;
    return {nullptr, {&m_library}};
}
