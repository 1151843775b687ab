/* What the stub library is told to answer, and what it saw. */
#pragma once

#include <stdint.h>

typedef struct StubState {
    /* answers */
    int32_t status;        /* of the context-bound functions below */
    const char* errorText; /* null: none */
    const char* errorDetails;
    int32_t errorCode;
    uint8_t failResult;       /* settings_new_cf hands out a result */
    uint8_t failReadingError; /* the functions that read a result fail too */
    uint8_t callProgress;     /* how often vacuum reports progress */
    /* observations */
    int lastErrorCalls;
    int resultsAlive;
    int textsAlive;
    int contextsAlive;
    int cloudsAlive;
    int selectNewCalls;
    int selectNodesNewCalls;
    uint32_t selectNodesCount;
    int selectNextCalls;
    int selectsAlive;
    int progressStopped;
    int progressCalls;
    char api[200];
} StubState;
