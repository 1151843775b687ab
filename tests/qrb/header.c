/* The C interface must compile as plain C99 without complaint. */
#define QRB_PROTOTYPES
#include "qrb/qrb.h"

int qrb_header_is_plain_c(void) {
    return QRB_SUCCESS == 1 && QRB_DATA_TYPE_DOUBLE == 10;
}
