#include "platform/linux/SoundContext.h"

namespace
{

constexpr uint32_t AnyNumber = 1;

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
    // By itself the library turns to sound cards where its part for sound servers is not installed. Its part
    // for cards prints to standard error when there is none, and is unloaded while a thread may still be in
    // it.
    m_library.setDriver(made, "pulse");
    if (m_library.open(made) != CA_SUCCESS)
        context.reset();
    return context;
}
