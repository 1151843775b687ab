/* A library with every function of the interface; each answers 0: a failure where it returns a
 * status, success where it returns a result. Weak, so that stubstate.c can say otherwise. */
#include "qrb/qrb.h"

#define QRB_FUNCTION(result, name, parameters)                            \
    __attribute__((weak, visibility("default"))) result name parameters;  \
    __attribute__((weak, visibility("default"))) result name parameters { \
        return (result)0;                                                 \
    }

/* A build of this file can leave one function out by giving it another name. */
#if defined(STUB_WITHOUT_LAST)
#define qrb_string_delete_cf stub_left_out
#elif defined(STUB_WITHOUT_CLOSE)
#define qrb_pointcloud_close stub_left_out
#endif

#include "qrb/functions.def"
