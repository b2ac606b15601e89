#pragma once

// VX_ADDRESS_SANITIZER is defined in a build with that sanitizer, whichever compiler it is.
#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define VX_ADDRESS_SANITIZER
#endif
#elif defined(__SANITIZE_ADDRESS__)
#define VX_ADDRESS_SANITIZER
#endif

/// So many times as long as else may take what is limited, and what is waited for.
#ifdef VX_ADDRESS_SANITIZER
constexpr int kSlowness = 4;
#else
constexpr int kSlowness = 1;
#endif
