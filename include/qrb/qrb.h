/* The C interface of the database library: point-cloud database files behind a flat table of
 * functions, listed in functions.def. A program loads a library with these functions at run time
 * (qrb/loader.h); a library that implements them defines QRB_PROTOTYPES before it includes this.
 * The functions of optional.def a library may lack.
 *
 * Conventions
 *
 *  1. Two patterns. A function without the suffix _cf is bound to a context, its first argument,
 *     and returns a status: QRB_SUCCESS or a failure, whose code, text and details
 *     qrb_context_get_last_error tells until the next call on that context. A function with the
 *     suffix _cf needs no context; it returns null for success, else a result handle that carries
 *     code, text and details and that the caller deletes with qrb_result_delete_cf.
 *  2. Ownership. What a ..._new function made is deleted with the matching ..._delete. Databases,
 *     queries, transaction records and index nodes go with the context that made them, when that
 *     is deleted first: databases are closed and release their locks. Settings and attribute
 *     records stand alone and stay, whichever function made them. Results and texts of _cf
 *     functions stay, too. Queries keep the file of their database open for themselves: when the
 *     handle is closed or deleted, the pending transaction is rolled back and its lock released;
 *     queries that belong to it fail from then on, other select and stat queries go on.
 *  3. Texts are UTF-8 and zero-terminated; null as an input means the empty text. A text that a
 *     context-bound function hands out belongs to the library and is valid until the next call on
 *     the same context. A text that a _cf function hands out (char**) belongs to the caller and is
 *     deleted with qrb_string_delete_cf.
 *  4. Lists of names are a count and one block that holds that many zero-terminated texts one
 *     after another. An empty list has count 0 and a block that must not be read.
 *  5. Arguments: inputs first, outputs last, but for the _new functions of contexts, where the
 *     output comes first. Outputs are written on success only. Booleans are uint8_t, 0 or 1.
 *  6. Threads. A context and the databases, queries, transaction records and nodes made from it may
 *     be used by one thread at a time, from any thread; calls on them are not serialised. Different
 *     contexts with what was made from them may be used at the same time, also on the same file.
 *     Records (settings, attributes) and results stand alone: different ones may be used at the
 *     same time through _cf functions, which keep nothing between two calls. Inside a call the
 *     library may use all cores; it calls back on the thread of the call only.
 *  7. Callbacks must not throw or leave the call in another way; nor does the library. Within a
 *     callback the database that is at work answers only qrb_pointcloud_is_open and _get_uuid and
 *     qrb_pointcloud_transaction_current, _pending and _list. Every other call on it and on its
 *     queries, their deletion, too, fails with QRB_ERROR_STATE and changes nothing; so does the
 *     deletion of its context. What concerns no open database, and other database handles of the
 *     same context, may be used. Calls within a callback replace the context's last error and text.
 *  8. Numbers: sizes in bytes, counts in points, angles and lengths as the attribute's unit says.
 *  9. A changing function needs a pending transaction, and texts in UTF-8, and fails without.
 * 10. A point attribute of length n has elements 0 to n-1; "NAME" stands for all of them (or the
 *     only one), "NAME[I]" for one. Data types are those of qrb_data_type.
 * 11. A filter is an expression, empty for everything, or one of the commands "find largest leaf",
 *     "find largest node", "find fullest leaf" and "find fullest node", which stands for one node of
 *     the index and what is below it.
 * 12. Points stored in inner nodes of the index are there for display (level of detail): they stand
 *     for points below, are read only by queries that list their node, and are never changed by
 *     queries.
 * 13. Handles are checked: one that was deleted, is of another kind or was never handed out fails
 *     with QRB_ERROR_ARGUMENT, a context of that sort with QRB_FAILURE alone. An opaque handle is
 *     no address; its value is used once. Index nodes are real structures that the caller reads:
 *     only the ones from qrb_pointcloud_graph_node_new may be passed, not their children.
 * 14. Out of memory is an error like others, QRB_ERROR_MEMORY. A _cf function that has no memory
 *     for a result returns a constant one, which need not but may be deleted.
 * 15. Open settings have members that only their JSON form (open_settings_json_load) has:
 *     "transaction", the number of a kept transaction whose state is read whatever becomes the
 *     current one (0, the default: the current one), and "readOnly" (default false). A database that
 *     was opened so takes no writer's lock, and whatever would change the file fails with
 *     QRB_ERROR_STATE; a transaction implies read only, and qrb_pointcloud_transaction_current tells
 *     its number. Who opens a transaction asks for that number, because a library that knows nothing
 *     of these members opens the current one.
 * 16. In two transactions of one file a leaf of the index with the same number and the same revision
 *     stores the same points with the same values. What a leaf doesn't store of an attribute, because
 *     all its points have the default value or, of storage class constant, the value of the whole
 *     file, may differ between them with the definition or that value.
 */
#ifndef QRB_QRB_H
#define QRB_QRB_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef int32_t qrb_status;
enum { QRB_FAILURE = 0, QRB_SUCCESS = 1 };

enum qrb_data_type {
    QRB_DATA_TYPE_NONE = 0,
    QRB_DATA_TYPE_UINT8 = 1,
    QRB_DATA_TYPE_INT8 = 2,
    QRB_DATA_TYPE_UINT16 = 3,
    QRB_DATA_TYPE_INT16 = 4,
    QRB_DATA_TYPE_UINT32 = 5,
    QRB_DATA_TYPE_INT32 = 6,
    QRB_DATA_TYPE_UINT64 = 7,
    QRB_DATA_TYPE_INT64 = 8,
    QRB_DATA_TYPE_SINGLE = 9,
    QRB_DATA_TYPE_DOUBLE = 10
};

/* Error codes that qrb_context_get_last_error and qrb_result_get_error_code_cf tell. */
enum qrb_error_code {
    QRB_ERROR_INTERNAL = 1,     /* a fault of the library */
    QRB_ERROR_ARGUMENT = 2,     /* an argument that the function can't take */
    QRB_ERROR_STATE = 3,        /* not possible now: no open file, no pending transaction, ... */
    QRB_ERROR_NOT_FOUND = 4,    /* no such file, attribute, item, transaction, node */
    QRB_ERROR_EXISTS = 5,       /* a file or name that is there already */
    QRB_ERROR_FILE = 6,         /* the file system: no right, no space, a failing device */
    QRB_ERROR_FORMAT = 7,       /* not a database file, or one of a later format */
    QRB_ERROR_DAMAGED = 8,      /* contents that do not agree with their checksums */
    QRB_ERROR_BUSY = 9,         /* another process is writing */
    QRB_ERROR_FILTER = 10,      /* a filter expression that can't be understood */
    QRB_ERROR_RANGE = 11,       /* a value outside the range of its attribute */
    QRB_ERROR_VALIDATION = 12,  /* the file or item does not agree with its schema */
    QRB_ERROR_CANCELLED = 13,   /* a progress callback said stop */
    QRB_ERROR_MEMORY = 14,      /* out of memory */
    QRB_ERROR_NOT_AVAILABLE = 15 /* this version of the library doesn't do it yet */
};

typedef struct qrb_object qrb_object;
typedef struct qrb_context qrb_context;
typedef struct qrb_result qrb_result;
typedef struct qrb_pointcloud qrb_pointcloud;
typedef struct qrb_create_settings qrb_create_settings;
typedef struct qrb_open_settings qrb_open_settings;
typedef struct qrb_point_attribute qrb_point_attribute;
typedef struct qrb_transaction qrb_transaction;
typedef struct qrb_query_select qrb_query_select;
typedef struct qrb_query_insert qrb_query_insert;
typedef struct qrb_query_update qrb_query_update;
typedef struct qrb_query_remove qrb_query_remove;
typedef struct qrb_query_fill qrb_query_fill;
typedef struct qrb_query_invert qrb_query_invert;
typedef struct qrb_query_stat qrb_query_stat;

/* A node of the point index. Made and deleted by the library, read by the caller. */
typedef struct qrb_graph_node {
    uint32_t id;                       /* from 1; 0: absent */
    uint32_t revision;                 /* the transaction that last changed it */
    int64_t point_count_total;         /* points in this node's leaves and below */
    int64_t point_count_node;          /* points stored in the node itself */
    uint32_t child_count;              /* 0: a leaf */
    struct qrb_graph_node** children;  /* child_count nodes, owned by this one */
} qrb_graph_node;

/* Called with the work done in per cent (0 to 100); returns non-zero to go on, 0 to stop. */
typedef uint8_t (*qrb_progress_function)(uint8_t percent, void* data);

/* Called while a call works; returns non-zero to go on, 0 to stop. See optional.def. */
typedef uint8_t (*qrb_interrupt_function)(void* data);

/* Answers a challenge of challenge_size bytes with answer_size bytes; returns non-zero if it can. */
typedef uint8_t (*qrb_authentication_function)(const uint8_t* challenge, uint32_t challenge_size,
                                               uint8_t* answer, uint32_t answer_size, void* data);

#ifdef QRB_PROTOTYPES
#define QRB_FUNCTION(result, name, parameters) result name parameters;
#include "functions.def"
#define QRB_OPTIONAL_FUNCTION(result, name, parameters) result name parameters;
#include "optional.def"
#endif

#ifdef __cplusplus
}
#endif

#endif
