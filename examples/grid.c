/* Makes a database of points on a grid and reads those back that pass a filter. C99, linked with
 * the library: CMake's qrb::library, or pkg-config qrb.
 *
 *   grid FILE      the file must not exist
 */
#include <qrb/qrb.h>

#include <stdio.h>
#include <stdlib.h>

enum { edge = 100, batch = 1000 };

static qrb_context* context;

/* Each call on a context tells whether it succeeded, the context why not. */
static void check(qrb_status status) {
    int32_t code = 0;
    const char* text = "";
    const char* details = "";
    if (status == QRB_SUCCESS)
        return;
    qrb_context_get_last_error(context, &code, &text, &details);
    fprintf(stderr, "grid: %s\n%s\n", text, details);
    exit(EXIT_FAILURE);
}

static void insert_points(qrb_pointcloud* cloud) {
    static double xyz[edge][3];
    qrb_query_insert* query = NULL;
    uint32_t transaction = 0;
    uint32_t taken = 0;
    int row, column;

    check(qrb_pointcloud_transaction_begin(context, cloud, "Make a grid", "grid.c", "", "",
                                           &transaction));
    check(qrb_pointcloud_query_insert_new(context, cloud, &query));
    check(qrb_pointcloud_query_insert_bind(context, query, "tarvo.xyz", QRB_DATA_TYPE_DOUBLE, xyz,
                                           sizeof xyz[0]));
    for (row = 0; row < edge; ++row) {
        for (column = 0; column < edge; ++column) {
            xyz[column][0] = column;
            xyz[column][1] = row;
            xyz[column][2] = 0.5 * row;
        }
        check(qrb_pointcloud_query_insert_next(context, query, edge, &taken));
    }
    check(qrb_pointcloud_query_insert_delete(context, query));
    check(qrb_pointcloud_transaction_commit(context, cloud));
}

static void print_sum(qrb_pointcloud* cloud, const char* filter) {
    static double heights[batch];
    qrb_query_select* query = NULL;
    uint32_t count = 0;
    unsigned long total = 0;
    double sum = 0;

    check(qrb_pointcloud_query_select_new(context, cloud, 0, filter, &query));
    check(qrb_pointcloud_query_select_bind(context, query, "tarvo.xyz[2]", QRB_DATA_TYPE_DOUBLE,
                                           heights, sizeof heights[0]));
    for (;;) {
        uint32_t i;
        check(qrb_pointcloud_query_select_next(context, query, batch, &count));
        if (count == 0)
            break;
        for (i = 0; i < count; ++i)
            sum += heights[i];
        total += count;
    }
    check(qrb_pointcloud_query_select_delete(context, query));
    printf("%s: %lu points, mean height %.3f\n", filter, total, total ? sum / total : 0);
}

int main(int argc, char** argv) {
    qrb_create_settings* settings = NULL;
    qrb_pointcloud* cloud = NULL;

    if (argc != 2) {
        fprintf(stderr, "grid FILE: the database to make\n");
        return 2;
    }
    check(qrb_context_new(&context, "OFF", ""));
    /* As they are the settings make "tarvo.xyz" the primary attribute. */
    check(qrb_pointcloud_create_settings_new(context, &settings));
    check(qrb_pointcloud_new(context, &cloud));
    check(qrb_pointcloud_create(context, cloud, argv[1], settings));
    check(qrb_pointcloud_create_settings_delete(context, settings));

    insert_points(cloud);
    print_sum(cloud, "tarvo.xyz[0] < 10 && tarvo.xyz[2] >= 25");

    /* Closes what was opened on it. */
    check(qrb_context_delete(context));
    return EXIT_SUCCESS;
}
