#include "platform/linux/SoundLibrary.h"

#include <dlfcn.h>

namespace
{

using AlsaErrorHandler = void (*)(
    const char *file, int line, const char *function, int error, const char *format, ...);

void ignoreError(const char *, int, const char *, int, const char *, ...) {}

/// Never unloaded. Not by the toolkit's class, which tidies up at the end of the process: a thread may be in
/// the library then.
void *load(const char *name)
{
    return ::dlopen(name, RTLD_NOW | RTLD_LOCAL);
}

template<class Function>
bool resolve(void *library, const char *name, Function &function)
{
    function = library ? reinterpret_cast<Function>(::dlsym(library, name)) : nullptr;
    return function != nullptr;
}

} // namespace

SoundLibrary::SoundLibrary()
{
    void *const library = load("libcanberra.so.0");
    m_isLoaded = resolve(library, "ca_context_create", createContext) &&
        resolve(library, "ca_context_set_driver", setDriver) &&
        resolve(library, "ca_context_change_props", changeProperties) &&
        resolve(library, "ca_context_open", open) && resolve(library, "ca_context_play", play) &&
        resolve(library, "ca_context_destroy", destroyContext);
}

void SoundLibrary::silenceSoundCards()
{
    void *const library = load("libasound.so.2");
    int (*setErrorHandler)(AlsaErrorHandler) = nullptr;
    if (resolve(library, "snd_lib_error_set_handler", setErrorHandler))
        setErrorHandler(ignoreError);
}
