/* The functions of the stub library that answer as StubState says. */
#define QRB_PROTOTYPES
#pragma GCC visibility push(default)
#include "qrb/qrb.h"

#include "tests/qrb/stubstate.h"

#include <stdlib.h>
#include <string.h>

static StubState s_state;
static int s_object;

StubState* stub_state(void);
StubState* stub_state(void) {
    return &s_state;
}

static qrb_result* make_result(void) {
    ++s_state.resultsAlive;
    return (qrb_result*)malloc(1);
}

static char* make_text(const char* text) {
    if (text == NULL) {
        return NULL;
    }
    ++s_state.textsAlive;
    char* copy = (char*)malloc(strlen(text) + 1);
    return strcpy(copy, text);
}

qrb_status qrb_context_new_with_api(qrb_context** context, const char* api, const char* level,
                                    const char* path) {
    (void)level;
    (void)path;
    strncpy(s_state.api, api, sizeof s_state.api - 1);
    *context = (qrb_context*)&s_object;
    ++s_state.contextsAlive;
    return s_state.status;
}

qrb_status qrb_context_delete(qrb_context* context) {
    (void)context;
    --s_state.contextsAlive;
    return QRB_SUCCESS;
}

qrb_status qrb_context_get_last_error(qrb_context* context, int32_t* code, const char** text,
                                      const char** details) {
    (void)context;
    ++s_state.lastErrorCalls;
    *code = s_state.errorCode;
    *text = s_state.errorText;
    *details = s_state.errorDetails;
    return QRB_SUCCESS;
}

qrb_status qrb_library_name(qrb_context* context, const char** text) {
    (void)context;
    *text = NULL;
    return s_state.status;
}

/* Knows no form of a report. */
qrb_status qrb_pointcloud_inspect(qrb_context* context, qrb_pointcloud* pointcloud, uint8_t format,
                                  const char** text) {
    (void)context;
    (void)pointcloud;
    (void)format;
    *text = NULL;
    s_state.errorCode = QRB_ERROR_ARGUMENT;
    return 0;
}

qrb_result* qrb_result_get_error_code_cf(const qrb_result* result, int32_t* code) {
    (void)result;
    if (s_state.failReadingError) {
        return make_result();
    }
    *code = s_state.errorCode;
    return NULL;
}

qrb_result* qrb_result_get_error_text_cf(const qrb_result* result, char** text) {
    (void)result;
    if (s_state.failReadingError) {
        return make_result();
    }
    *text = make_text(s_state.errorText);
    return NULL;
}

qrb_result* qrb_result_get_error_details_cf(const qrb_result* result, char** details) {
    (void)result;
    if (s_state.failReadingError) {
        return make_result();
    }
    *details = make_text(s_state.errorDetails);
    return NULL;
}

qrb_result* qrb_result_delete_cf(qrb_result* result) {
    --s_state.resultsAlive;
    free(result);
    return NULL;
}

qrb_result* qrb_string_delete_cf(char* string) {
    --s_state.textsAlive;
    free(string);
    return NULL;
}

qrb_result* qrb_pointcloud_open_settings_new_cf(qrb_open_settings** settings) {
    if (s_state.failResult) {
        return make_result();
    }
    *settings = (qrb_open_settings*)&s_object;
    return NULL;
}

qrb_status qrb_pointcloud_new(qrb_context* context, qrb_pointcloud** pointcloud) {
    (void)context;
    *pointcloud = (qrb_pointcloud*)&s_object;
    ++s_state.cloudsAlive;
    return QRB_SUCCESS;
}

qrb_status qrb_pointcloud_delete(qrb_context* context, qrb_pointcloud* pointcloud) {
    (void)context;
    (void)pointcloud;
    --s_state.cloudsAlive;
    return QRB_SUCCESS;
}

qrb_status qrb_pointcloud_query_select_new(qrb_context* context, qrb_pointcloud* pointcloud,
                                           uint32_t node, const char* filter,
                                           qrb_query_select** query) {
    (void)context;
    (void)pointcloud;
    (void)filter;
    *query = (qrb_query_select*)&s_object;
    s_state.selectNewCalls += node == 0 ? 1 : 100;
    ++s_state.selectsAlive;
    return QRB_SUCCESS;
}

qrb_status qrb_pointcloud_query_select_nodes_new(qrb_context* context, qrb_pointcloud* pointcloud,
                                                 const uint32_t* nodes, uint32_t count,
                                                 const char* filter, qrb_query_select** query) {
    (void)context;
    (void)pointcloud;
    (void)filter;
    *query = (qrb_query_select*)&s_object;
    s_state.selectNodesNewCalls += nodes != NULL ? 1 : 100;
    s_state.selectNodesCount = count;
    ++s_state.selectsAlive;
    return QRB_SUCCESS;
}

qrb_status qrb_pointcloud_query_select_next(qrb_context* context, qrb_query_select* query,
                                            uint32_t count, uint32_t* processed) {
    (void)context;
    (void)query;
    ++s_state.selectNextCalls;
    *processed = count;
    return QRB_SUCCESS;
}

qrb_status qrb_pointcloud_query_select_delete(qrb_context* context, qrb_query_select* query) {
    (void)context;
    (void)query;
    --s_state.selectsAlive;
    return QRB_SUCCESS;
}

/* Goes on reporting after it was told to stop, as a library is free to. */
qrb_status qrb_pointcloud_management_vacuum(qrb_context* context, qrb_pointcloud* pointcloud,
                                            qrb_progress_function progress, void* data) {
    (void)context;
    (void)pointcloud;
    for (int i = 0; i < s_state.callProgress && progress != NULL; ++i) {
        ++s_state.progressCalls;
        if (!progress((uint8_t)(10 * i), data)) {
            s_state.progressStopped = 1;
        }
    }
    return s_state.progressStopped ? QRB_FAILURE : QRB_SUCCESS;
}
