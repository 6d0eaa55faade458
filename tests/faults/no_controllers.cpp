// Loaded before SDL: a system whose controllers SDL cannot start.

#include <SDL.h>
#include <dlfcn.h>

extern "C" int SDL_InitSubSystem(Uint32 flags) {
  if ((flags & SDL_INIT_GAMECONTROLLER) != 0) {
    return SDL_SetError("no controllers today");
  }
  const auto next = reinterpret_cast<int (*)(Uint32)>(dlsym(RTLD_NEXT, "SDL_InitSubSystem"));
  return next(flags);
}
