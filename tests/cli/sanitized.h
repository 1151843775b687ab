// SANITIZED where qrbtool has sanitizers in it, which some of its surroundings can't bear.
#pragma once

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define SANITIZED
#endif
#endif
#if defined(__SANITIZE_THREAD__)
#define SANITIZED
#endif
