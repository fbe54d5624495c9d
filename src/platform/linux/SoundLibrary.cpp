#include "platform/linux/SoundLibrary.h"

#include <dlfcn.h>

namespace
{

template<class Function>
bool resolve(void *library, const char *name, Function &function)
{
    function = reinterpret_cast<Function>(::dlsym(library, name));
    return function != nullptr;
}

} // namespace

SoundLibrary::SoundLibrary()
{
    // Never unloaded; not with the toolkit's class either, which tidies up at the end of the process, when a
    // thread may still be in the library.
    void *const library = ::dlopen("libcanberra.so.0", RTLD_NOW | RTLD_LOCAL);
    m_isLoaded = library && resolve(library, "ca_context_create", createContext) &&
        resolve(library, "ca_context_set_driver", setDriver) &&
        resolve(library, "ca_context_change_props", changeProperties) &&
        resolve(library, "ca_context_open", open) && resolve(library, "ca_context_play", play) &&
        resolve(library, "ca_context_destroy", destroyContext);
}
