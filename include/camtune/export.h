// Visibility of the library's public API. libcamtune is built with hidden visibility, so only
// what a public header declares between CAMTUNE_EXPORT_BEGIN and CAMTUNE_EXPORT_END is exported
// and becomes ABI; everything in src/ stays internal.
#pragma once

#define CAMTUNE_EXPORT_BEGIN _Pragma("GCC visibility push(default)")
#define CAMTUNE_EXPORT_END _Pragma("GCC visibility pop")
