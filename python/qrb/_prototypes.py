"""Prototypes of the C interface. Made by make_prototypes.py: change that, not this."""

from ctypes import CFUNCTYPE, POINTER, Structure
from ctypes import c_char_p, c_double, c_int32, c_int64, c_uint8, c_uint32, c_uint64, c_void_p
from enum import IntEnum
from typing import Any, Dict, Tuple


class DataType(IntEnum):
    """The values of qrb_data_type."""

    NONE = 0
    UINT8 = 1
    INT8 = 2
    UINT16 = 3
    INT16 = 4
    UINT32 = 5
    INT32 = 6
    UINT64 = 7
    INT64 = 8
    SINGLE = 9
    DOUBLE = 10


class ErrorCode(IntEnum):
    """The values of qrb_error_code."""

    INTERNAL = 1
    ARGUMENT = 2
    STATE = 3
    NOT_FOUND = 4
    EXISTS = 5
    FILE = 6
    FORMAT = 7
    DAMAGED = 8
    BUSY = 9
    FILTER = 10
    RANGE = 11
    VALIDATION = 12
    CANCELLED = 13
    MEMORY = 14
    NOT_AVAILABLE = 15


SUCCESS = 1
qrb_status = c_int32


class qrb_object(Structure):
    pass


class qrb_context(Structure):
    pass


class qrb_result(Structure):
    pass


class qrb_pointcloud(Structure):
    pass


class qrb_create_settings(Structure):
    pass


class qrb_open_settings(Structure):
    pass


class qrb_point_attribute(Structure):
    pass


class qrb_transaction(Structure):
    pass


class qrb_query_select(Structure):
    pass


class qrb_query_insert(Structure):
    pass


class qrb_query_update(Structure):
    pass


class qrb_query_remove(Structure):
    pass


class qrb_query_fill(Structure):
    pass


class qrb_query_invert(Structure):
    pass


class qrb_query_stat(Structure):
    pass


class qrb_graph_node(Structure):
    pass


qrb_graph_node._fields_ = [
    ("id", c_uint32),
    ("revision", c_uint32),
    ("point_count_total", c_int64),
    ("point_count_node", c_int64),
    ("child_count", c_uint32),
    ("children", POINTER(POINTER(qrb_graph_node))),
]


qrb_progress_function = CFUNCTYPE(c_uint8, c_uint8, c_void_p)
qrb_interrupt_function = CFUNCTYPE(c_uint8, c_void_p)
qrb_authentication_function = CFUNCTYPE(c_uint8, POINTER(c_uint8), c_uint32, POINTER(c_uint8), c_uint32, c_void_p)

# By name: the type of the result and those of the arguments.
FUNCTIONS: Dict[str, Tuple[Any, Tuple[Any, ...]]] = {
    "qrb_context_delete":
        (qrb_status, (POINTER(qrb_context),)),
    "qrb_context_get_last_error":
        (qrb_status, (POINTER(qrb_context), POINTER(c_int32), POINTER(c_char_p), POINTER(c_char_p),)),
    "qrb_context_new":
        (qrb_status, (POINTER(POINTER(qrb_context)), c_char_p, c_char_p,)),
    "qrb_context_new_with_api":
        (qrb_status, (POINTER(POINTER(qrb_context)), c_char_p, c_char_p, c_char_p,)),
    "qrb_database_file_type_check":
        (qrb_status, (POINTER(qrb_context), c_char_p, POINTER(c_uint8),)),
    "qrb_database_file_type_suffix":
        (qrb_status, (POINTER(qrb_context), POINTER(c_char_p),)),
    "qrb_database_file_type_title":
        (qrb_status, (POINTER(qrb_context), POINTER(c_char_p),)),
    "qrb_factory_set_authentication_function":
        (qrb_status, (POINTER(qrb_context), qrb_authentication_function, c_void_p,)),
    "qrb_library_filename":
        (qrb_status, (POINTER(qrb_context), POINTER(c_char_p),)),
    "qrb_library_license":
        (qrb_status, (POINTER(qrb_context), POINTER(c_char_p),)),
    "qrb_library_name":
        (qrb_status, (POINTER(qrb_context), POINTER(c_char_p),)),
    "qrb_library_version":
        (qrb_status, (POINTER(qrb_context), POINTER(c_char_p),)),
    "qrb_object_lock_cf":
        (POINTER(qrb_result), (POINTER(qrb_object),)),
    "qrb_object_unlock_cf":
        (POINTER(qrb_result), (POINTER(qrb_object),)),
    "qrb_pointcloud_changelog_append_log_message":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), c_char_p,)),
    "qrb_pointcloud_changelog_export_to_textfile":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), c_char_p,)),
    "qrb_pointcloud_changelog_import_from_database":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), c_char_p,)),
    "qrb_pointcloud_changelog_verify_log_entry_cf":
        (POINTER(qrb_result), (c_char_p, c_uint32, c_uint32, POINTER(c_uint8), POINTER(c_uint8),)),
    "qrb_pointcloud_clear_cache":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud),)),
    "qrb_pointcloud_close":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud),)),
    "qrb_pointcloud_create":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), c_char_p, POINTER(qrb_create_settings),)),
    "qrb_pointcloud_create_settings_delete":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_create_settings),)),
    "qrb_pointcloud_create_settings_delete_cf":
        (POINTER(qrb_result), (POINTER(qrb_create_settings),)),
    "qrb_pointcloud_create_settings_get_cache_size":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_create_settings), POINTER(c_uint32),)),
    "qrb_pointcloud_create_settings_get_cache_size_64":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_create_settings), POINTER(c_uint64),)),
    "qrb_pointcloud_create_settings_get_cache_size_64_cf":
        (POINTER(qrb_result), (POINTER(qrb_create_settings), POINTER(c_uint64),)),
    "qrb_pointcloud_create_settings_get_cache_size_cf":
        (POINTER(qrb_result), (POINTER(qrb_create_settings), POINTER(c_uint32),)),
    "qrb_pointcloud_create_settings_get_chunk_mode":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_create_settings), POINTER(c_uint32),)),
    "qrb_pointcloud_create_settings_get_chunk_mode_cf":
        (POINTER(qrb_result), (POINTER(qrb_create_settings), POINTER(c_uint32),)),
    "qrb_pointcloud_create_settings_get_chunk_size":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_create_settings), POINTER(c_uint32),)),
    "qrb_pointcloud_create_settings_get_chunk_size_cf":
        (POINTER(qrb_result), (POINTER(qrb_create_settings), POINTER(c_uint32),)),
    "qrb_pointcloud_create_settings_get_chunk_size_lod":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_create_settings), POINTER(c_uint32),)),
    "qrb_pointcloud_create_settings_get_chunk_size_lod_cf":
        (POINTER(qrb_result), (POINTER(qrb_create_settings), POINTER(c_uint32),)),
    "qrb_pointcloud_create_settings_get_compression_level":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_create_settings), POINTER(c_uint8),)),
    "qrb_pointcloud_create_settings_get_compression_level_cf":
        (POINTER(qrb_result), (POINTER(qrb_create_settings), POINTER(c_uint8),)),
    "qrb_pointcloud_create_settings_get_lod_mode":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_create_settings), POINTER(c_uint32),)),
    "qrb_pointcloud_create_settings_get_lod_mode_cf":
        (POINTER(qrb_result), (POINTER(qrb_create_settings), POINTER(c_uint32),)),
    "qrb_pointcloud_create_settings_get_optimize_point_id":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_create_settings), POINTER(c_uint8),)),
    "qrb_pointcloud_create_settings_get_optimize_point_id_cf":
        (POINTER(qrb_result), (POINTER(qrb_create_settings), POINTER(c_uint8),)),
    "qrb_pointcloud_create_settings_get_point_insert_mode":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_create_settings), POINTER(c_char_p),)),
    "qrb_pointcloud_create_settings_get_point_insert_mode_cf":
        (POINTER(qrb_result), (POINTER(qrb_create_settings), POINTER(c_char_p),)),
    "qrb_pointcloud_create_settings_get_primary_attribute":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_create_settings), POINTER(qrb_point_attribute),)),
    "qrb_pointcloud_create_settings_get_primary_attribute_cf":
        (POINTER(qrb_result), (POINTER(qrb_create_settings), POINTER(qrb_point_attribute),)),
    "qrb_pointcloud_create_settings_json_load":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_create_settings), c_char_p,)),
    "qrb_pointcloud_create_settings_json_load_cf":
        (POINTER(qrb_result), (POINTER(qrb_create_settings), c_char_p,)),
    "qrb_pointcloud_create_settings_json_save":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_create_settings), POINTER(c_char_p),)),
    "qrb_pointcloud_create_settings_json_save_cf":
        (POINTER(qrb_result), (POINTER(qrb_create_settings), POINTER(c_char_p),)),
    "qrb_pointcloud_create_settings_new":
        (qrb_status, (POINTER(qrb_context), POINTER(POINTER(qrb_create_settings)),)),
    "qrb_pointcloud_create_settings_new_cf":
        (POINTER(qrb_result), (POINTER(POINTER(qrb_create_settings)),)),
    "qrb_pointcloud_create_settings_set_cache_size":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_create_settings), c_uint32,)),
    "qrb_pointcloud_create_settings_set_cache_size_64":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_create_settings), c_uint64,)),
    "qrb_pointcloud_create_settings_set_cache_size_64_cf":
        (POINTER(qrb_result), (POINTER(qrb_create_settings), c_uint64,)),
    "qrb_pointcloud_create_settings_set_cache_size_cf":
        (POINTER(qrb_result), (POINTER(qrb_create_settings), c_uint32,)),
    "qrb_pointcloud_create_settings_set_chunk_mode":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_create_settings), c_uint32,)),
    "qrb_pointcloud_create_settings_set_chunk_mode_cf":
        (POINTER(qrb_result), (POINTER(qrb_create_settings), c_uint32,)),
    "qrb_pointcloud_create_settings_set_chunk_size":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_create_settings), c_uint32,)),
    "qrb_pointcloud_create_settings_set_chunk_size_cf":
        (POINTER(qrb_result), (POINTER(qrb_create_settings), c_uint32,)),
    "qrb_pointcloud_create_settings_set_chunk_size_lod":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_create_settings), c_uint32,)),
    "qrb_pointcloud_create_settings_set_chunk_size_lod_cf":
        (POINTER(qrb_result), (POINTER(qrb_create_settings), c_uint32,)),
    "qrb_pointcloud_create_settings_set_compression_level":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_create_settings), c_uint8,)),
    "qrb_pointcloud_create_settings_set_compression_level_cf":
        (POINTER(qrb_result), (POINTER(qrb_create_settings), c_uint8,)),
    "qrb_pointcloud_create_settings_set_lod_mode":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_create_settings), c_uint32,)),
    "qrb_pointcloud_create_settings_set_lod_mode_cf":
        (POINTER(qrb_result), (POINTER(qrb_create_settings), c_uint32,)),
    "qrb_pointcloud_create_settings_set_optimize_point_id":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_create_settings), c_uint8,)),
    "qrb_pointcloud_create_settings_set_optimize_point_id_cf":
        (POINTER(qrb_result), (POINTER(qrb_create_settings), c_uint8,)),
    "qrb_pointcloud_create_settings_set_point_insert_mode":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_create_settings), c_char_p,)),
    "qrb_pointcloud_create_settings_set_point_insert_mode_cf":
        (POINTER(qrb_result), (POINTER(qrb_create_settings), c_char_p,)),
    "qrb_pointcloud_create_settings_set_primary_attribute":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_create_settings), POINTER(qrb_point_attribute),)),
    "qrb_pointcloud_create_settings_set_primary_attribute_cf":
        (POINTER(qrb_result), (POINTER(qrb_create_settings), POINTER(qrb_point_attribute),)),
    "qrb_pointcloud_create_with_schema":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), c_char_p, POINTER(qrb_create_settings), c_char_p, c_uint8,)),
    "qrb_pointcloud_delete":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud),)),
    "qrb_pointcloud_get_uuid":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), POINTER(c_char_p),)),
    "qrb_pointcloud_graph_node_delete":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_graph_node),)),
    "qrb_pointcloud_graph_node_new":
        (qrb_status, (POINTER(qrb_context), POINTER(POINTER(qrb_graph_node)),)),
    "qrb_pointcloud_inspect":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), c_uint8, POINTER(c_char_p),)),
    "qrb_pointcloud_is_empty":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), POINTER(c_uint8),)),
    "qrb_pointcloud_is_open":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), POINTER(c_uint8),)),
    "qrb_pointcloud_management_finalize":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud),)),
    "qrb_pointcloud_management_get_chunk_size_lod":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), POINTER(c_uint32),)),
    "qrb_pointcloud_management_get_lod_mode":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), POINTER(c_uint32),)),
    "qrb_pointcloud_management_set_chunk_size_lod":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), c_uint32,)),
    "qrb_pointcloud_management_set_lod_mode":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), c_uint32,)),
    "qrb_pointcloud_management_vacuum":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), qrb_progress_function, c_void_p,)),
    "qrb_pointcloud_management_validate":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), c_char_p, c_uint8,)),
    "qrb_pointcloud_meta_data_create_signature":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), c_char_p, c_uint32, c_uint32, POINTER(c_uint8),)),
    "qrb_pointcloud_meta_data_exists":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), c_char_p, POINTER(c_uint8),)),
    "qrb_pointcloud_meta_data_get":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), c_char_p, POINTER(c_char_p), c_char_p,)),
    "qrb_pointcloud_meta_data_list":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), POINTER(c_uint32), POINTER(c_char_p),)),
    "qrb_pointcloud_meta_data_remove":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), c_char_p,)),
    "qrb_pointcloud_meta_data_set":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), c_char_p, c_char_p,)),
    "qrb_pointcloud_meta_data_validate":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), c_char_p, c_char_p,)),
    "qrb_pointcloud_meta_data_validate_json":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), c_char_p, c_char_p,)),
    "qrb_pointcloud_meta_data_verify_signature":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), c_char_p, c_uint32, c_uint32, POINTER(c_uint8), POINTER(c_uint8),)),
    "qrb_pointcloud_new":
        (qrb_status, (POINTER(qrb_context), POINTER(POINTER(qrb_pointcloud)),)),
    "qrb_pointcloud_open":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), c_char_p, POINTER(qrb_open_settings),)),
    "qrb_pointcloud_open_settings_delete":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_open_settings),)),
    "qrb_pointcloud_open_settings_delete_cf":
        (POINTER(qrb_result), (POINTER(qrb_open_settings),)),
    "qrb_pointcloud_open_settings_get_cache_size":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_open_settings), POINTER(c_uint32),)),
    "qrb_pointcloud_open_settings_get_cache_size_64":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_open_settings), POINTER(c_uint64),)),
    "qrb_pointcloud_open_settings_get_cache_size_64_cf":
        (POINTER(qrb_result), (POINTER(qrb_open_settings), POINTER(c_uint64),)),
    "qrb_pointcloud_open_settings_get_cache_size_cf":
        (POINTER(qrb_result), (POINTER(qrb_open_settings), POINTER(c_uint32),)),
    "qrb_pointcloud_open_settings_json_load":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_open_settings), c_char_p,)),
    "qrb_pointcloud_open_settings_json_load_cf":
        (POINTER(qrb_result), (POINTER(qrb_open_settings), c_char_p,)),
    "qrb_pointcloud_open_settings_json_save":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_open_settings), POINTER(c_char_p),)),
    "qrb_pointcloud_open_settings_json_save_cf":
        (POINTER(qrb_result), (POINTER(qrb_open_settings), POINTER(c_char_p),)),
    "qrb_pointcloud_open_settings_new":
        (qrb_status, (POINTER(qrb_context), POINTER(POINTER(qrb_open_settings)),)),
    "qrb_pointcloud_open_settings_new_cf":
        (POINTER(qrb_result), (POINTER(POINTER(qrb_open_settings)),)),
    "qrb_pointcloud_open_settings_set_cache_size":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_open_settings), c_uint32,)),
    "qrb_pointcloud_open_settings_set_cache_size_64":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_open_settings), c_uint64,)),
    "qrb_pointcloud_open_settings_set_cache_size_64_cf":
        (POINTER(qrb_result), (POINTER(qrb_open_settings), c_uint64,)),
    "qrb_pointcloud_open_settings_set_cache_size_cf":
        (POINTER(qrb_result), (POINTER(qrb_open_settings), c_uint32,)),
    "qrb_pointcloud_point_attribute_data_type":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_point_attribute), POINTER(c_uint32),)),
    "qrb_pointcloud_point_attribute_data_type_cf":
        (POINTER(qrb_result), (POINTER(qrb_point_attribute), POINTER(c_uint32),)),
    "qrb_pointcloud_point_attribute_decode_descriptor":
        (qrb_status, (POINTER(qrb_context), c_char_p, POINTER(c_char_p), POINTER(c_int64), POINTER(c_char_p),)),
    "qrb_pointcloud_point_attribute_delete":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_point_attribute),)),
    "qrb_pointcloud_point_attribute_delete_cf":
        (POINTER(qrb_result), (POINTER(qrb_point_attribute),)),
    "qrb_pointcloud_point_attribute_get_compression_options":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_point_attribute), POINTER(c_uint8),)),
    "qrb_pointcloud_point_attribute_get_compression_options_cf":
        (POINTER(qrb_result), (POINTER(qrb_point_attribute), POINTER(c_uint8),)),
    "qrb_pointcloud_point_attribute_get_default_value":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_point_attribute), POINTER(c_double),)),
    "qrb_pointcloud_point_attribute_get_default_value_cf":
        (POINTER(qrb_result), (POINTER(qrb_point_attribute), POINTER(c_double),)),
    "qrb_pointcloud_point_attribute_get_description":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_point_attribute), POINTER(c_char_p),)),
    "qrb_pointcloud_point_attribute_get_description_cf":
        (POINTER(qrb_result), (POINTER(qrb_point_attribute), POINTER(c_char_p),)),
    "qrb_pointcloud_point_attribute_get_invalid_value":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_point_attribute), POINTER(c_double),)),
    "qrb_pointcloud_point_attribute_get_invalid_value_cf":
        (POINTER(qrb_result), (POINTER(qrb_point_attribute), POINTER(c_double),)),
    "qrb_pointcloud_point_attribute_get_length":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_point_attribute), POINTER(c_uint8),)),
    "qrb_pointcloud_point_attribute_get_length_cf":
        (POINTER(qrb_result), (POINTER(qrb_point_attribute), POINTER(c_uint8),)),
    "qrb_pointcloud_point_attribute_get_length_u32":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_point_attribute), POINTER(c_uint32),)),
    "qrb_pointcloud_point_attribute_get_length_u32_cf":
        (POINTER(qrb_result), (POINTER(qrb_point_attribute), POINTER(c_uint32),)),
    "qrb_pointcloud_point_attribute_get_lod_settings":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_point_attribute), POINTER(c_char_p),)),
    "qrb_pointcloud_point_attribute_get_lod_settings_cf":
        (POINTER(qrb_result), (POINTER(qrb_point_attribute), POINTER(c_char_p),)),
    "qrb_pointcloud_point_attribute_get_maximum_value":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_point_attribute), POINTER(c_double),)),
    "qrb_pointcloud_point_attribute_get_maximum_value_cf":
        (POINTER(qrb_result), (POINTER(qrb_point_attribute), POINTER(c_double),)),
    "qrb_pointcloud_point_attribute_get_minimum_value":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_point_attribute), POINTER(c_double),)),
    "qrb_pointcloud_point_attribute_get_minimum_value_cf":
        (POINTER(qrb_result), (POINTER(qrb_point_attribute), POINTER(c_double),)),
    "qrb_pointcloud_point_attribute_get_name":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_point_attribute), POINTER(c_char_p),)),
    "qrb_pointcloud_point_attribute_get_name_cf":
        (POINTER(qrb_result), (POINTER(qrb_point_attribute), POINTER(c_char_p),)),
    "qrb_pointcloud_point_attribute_get_named_values":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_point_attribute), POINTER(c_char_p),)),
    "qrb_pointcloud_point_attribute_get_named_values_cf":
        (POINTER(qrb_result), (POINTER(qrb_point_attribute), POINTER(c_char_p),)),
    "qrb_pointcloud_point_attribute_get_resolution":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_point_attribute), POINTER(c_double),)),
    "qrb_pointcloud_point_attribute_get_resolution_cf":
        (POINTER(qrb_result), (POINTER(qrb_point_attribute), POINTER(c_double),)),
    "qrb_pointcloud_point_attribute_get_scale_factor":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_point_attribute), POINTER(c_double),)),
    "qrb_pointcloud_point_attribute_get_scale_factor_cf":
        (POINTER(qrb_result), (POINTER(qrb_point_attribute), POINTER(c_double),)),
    "qrb_pointcloud_point_attribute_get_storage_class":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_point_attribute), POINTER(c_uint8),)),
    "qrb_pointcloud_point_attribute_get_storage_class_cf":
        (POINTER(qrb_result), (POINTER(qrb_point_attribute), POINTER(c_uint8),)),
    "qrb_pointcloud_point_attribute_get_tags":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_point_attribute), POINTER(c_char_p),)),
    "qrb_pointcloud_point_attribute_get_tags_cf":
        (POINTER(qrb_result), (POINTER(qrb_point_attribute), POINTER(c_char_p),)),
    "qrb_pointcloud_point_attribute_get_title":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_point_attribute), POINTER(c_char_p),)),
    "qrb_pointcloud_point_attribute_get_title_cf":
        (POINTER(qrb_result), (POINTER(qrb_point_attribute), POINTER(c_char_p),)),
    "qrb_pointcloud_point_attribute_get_unit_symbol":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_point_attribute), POINTER(c_char_p),)),
    "qrb_pointcloud_point_attribute_get_unit_symbol_cf":
        (POINTER(qrb_result), (POINTER(qrb_point_attribute), POINTER(c_char_p),)),
    "qrb_pointcloud_point_attribute_json_load":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_point_attribute), c_char_p,)),
    "qrb_pointcloud_point_attribute_json_load_cf":
        (POINTER(qrb_result), (POINTER(qrb_point_attribute), c_char_p,)),
    "qrb_pointcloud_point_attribute_json_save":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_point_attribute), POINTER(c_char_p),)),
    "qrb_pointcloud_point_attribute_json_save_cf":
        (POINTER(qrb_result), (POINTER(qrb_point_attribute), POINTER(c_char_p),)),
    "qrb_pointcloud_point_attribute_new":
        (qrb_status, (POINTER(qrb_context), POINTER(POINTER(qrb_point_attribute)),)),
    "qrb_pointcloud_point_attribute_new_cf":
        (POINTER(qrb_result), (POINTER(POINTER(qrb_point_attribute)),)),
    "qrb_pointcloud_point_attribute_set_compression_options":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_point_attribute), c_uint8,)),
    "qrb_pointcloud_point_attribute_set_compression_options_cf":
        (POINTER(qrb_result), (POINTER(qrb_point_attribute), c_uint8,)),
    "qrb_pointcloud_point_attribute_set_default_value":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_point_attribute), c_double,)),
    "qrb_pointcloud_point_attribute_set_default_value_cf":
        (POINTER(qrb_result), (POINTER(qrb_point_attribute), c_double,)),
    "qrb_pointcloud_point_attribute_set_description":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_point_attribute), c_char_p,)),
    "qrb_pointcloud_point_attribute_set_description_cf":
        (POINTER(qrb_result), (POINTER(qrb_point_attribute), c_char_p,)),
    "qrb_pointcloud_point_attribute_set_invalid_value":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_point_attribute), c_double,)),
    "qrb_pointcloud_point_attribute_set_invalid_value_cf":
        (POINTER(qrb_result), (POINTER(qrb_point_attribute), c_double,)),
    "qrb_pointcloud_point_attribute_set_length":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_point_attribute), c_uint8,)),
    "qrb_pointcloud_point_attribute_set_length_cf":
        (POINTER(qrb_result), (POINTER(qrb_point_attribute), c_uint8,)),
    "qrb_pointcloud_point_attribute_set_length_u32":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_point_attribute), c_uint32,)),
    "qrb_pointcloud_point_attribute_set_length_u32_cf":
        (POINTER(qrb_result), (POINTER(qrb_point_attribute), c_uint32,)),
    "qrb_pointcloud_point_attribute_set_lod_settings":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_point_attribute), c_char_p,)),
    "qrb_pointcloud_point_attribute_set_lod_settings_cf":
        (POINTER(qrb_result), (POINTER(qrb_point_attribute), c_char_p,)),
    "qrb_pointcloud_point_attribute_set_maximum_value":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_point_attribute), c_double,)),
    "qrb_pointcloud_point_attribute_set_maximum_value_cf":
        (POINTER(qrb_result), (POINTER(qrb_point_attribute), c_double,)),
    "qrb_pointcloud_point_attribute_set_minimum_value":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_point_attribute), c_double,)),
    "qrb_pointcloud_point_attribute_set_minimum_value_cf":
        (POINTER(qrb_result), (POINTER(qrb_point_attribute), c_double,)),
    "qrb_pointcloud_point_attribute_set_name":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_point_attribute), c_char_p,)),
    "qrb_pointcloud_point_attribute_set_name_cf":
        (POINTER(qrb_result), (POINTER(qrb_point_attribute), c_char_p,)),
    "qrb_pointcloud_point_attribute_set_named_values":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_point_attribute), c_char_p,)),
    "qrb_pointcloud_point_attribute_set_named_values_cf":
        (POINTER(qrb_result), (POINTER(qrb_point_attribute), c_char_p,)),
    "qrb_pointcloud_point_attribute_set_resolution":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_point_attribute), c_double,)),
    "qrb_pointcloud_point_attribute_set_resolution_cf":
        (POINTER(qrb_result), (POINTER(qrb_point_attribute), c_double,)),
    "qrb_pointcloud_point_attribute_set_scale_factor":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_point_attribute), c_double,)),
    "qrb_pointcloud_point_attribute_set_scale_factor_cf":
        (POINTER(qrb_result), (POINTER(qrb_point_attribute), c_double,)),
    "qrb_pointcloud_point_attribute_set_storage_class":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_point_attribute), c_uint8,)),
    "qrb_pointcloud_point_attribute_set_storage_class_cf":
        (POINTER(qrb_result), (POINTER(qrb_point_attribute), c_uint8,)),
    "qrb_pointcloud_point_attribute_set_tags":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_point_attribute), c_char_p,)),
    "qrb_pointcloud_point_attribute_set_tags_cf":
        (POINTER(qrb_result), (POINTER(qrb_point_attribute), c_char_p,)),
    "qrb_pointcloud_point_attribute_set_title":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_point_attribute), c_char_p,)),
    "qrb_pointcloud_point_attribute_set_title_cf":
        (POINTER(qrb_result), (POINTER(qrb_point_attribute), c_char_p,)),
    "qrb_pointcloud_point_attribute_set_unit_symbol":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_point_attribute), c_char_p,)),
    "qrb_pointcloud_point_attribute_set_unit_symbol_cf":
        (POINTER(qrb_result), (POINTER(qrb_point_attribute), c_char_p,)),
    "qrb_pointcloud_point_attributes_add":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), POINTER(qrb_point_attribute),)),
    "qrb_pointcloud_point_attributes_add_default":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), c_char_p,)),
    "qrb_pointcloud_point_attributes_discard":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), c_char_p,)),
    "qrb_pointcloud_point_attributes_duplicate":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), c_char_p, c_char_p,)),
    "qrb_pointcloud_point_attributes_exists":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), c_char_p, POINTER(c_uint8),)),
    "qrb_pointcloud_point_attributes_get":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), c_char_p, POINTER(qrb_point_attribute),)),
    "qrb_pointcloud_point_attributes_get_default":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), c_char_p, POINTER(qrb_point_attribute),)),
    "qrb_pointcloud_point_attributes_get_merged":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), POINTER(POINTER(qrb_pointcloud)), c_uint32, c_char_p, POINTER(qrb_point_attribute),)),
    "qrb_pointcloud_point_attributes_get_merged_all":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), POINTER(POINTER(qrb_pointcloud)), c_uint32, POINTER(c_uint32), POINTER(c_char_p),)),
    "qrb_pointcloud_point_attributes_group":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), c_char_p, POINTER(c_char_p), POINTER(c_uint32),)),
    "qrb_pointcloud_point_attributes_group_default":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), c_char_p, POINTER(c_char_p), POINTER(c_uint32),)),
    "qrb_pointcloud_point_attributes_list":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), POINTER(c_uint32), POINTER(c_char_p),)),
    "qrb_pointcloud_point_attributes_list_default":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), POINTER(c_uint32), POINTER(c_char_p),)),
    "qrb_pointcloud_point_attributes_list_filtered":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), c_char_p, POINTER(c_uint32), POINTER(c_char_p),)),
    "qrb_pointcloud_point_attributes_point_id_name":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), POINTER(c_char_p),)),
    "qrb_pointcloud_point_attributes_point_id_type":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), POINTER(c_uint32),)),
    "qrb_pointcloud_point_attributes_point_id_unit":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), POINTER(c_char_p),)),
    "qrb_pointcloud_point_attributes_primary_attribute_name":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), POINTER(c_char_p),)),
    "qrb_pointcloud_point_attributes_put":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), POINTER(qrb_point_attribute),)),
    "qrb_pointcloud_point_attributes_remove":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), c_char_p,)),
    "qrb_pointcloud_query_fill_bind":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_query_fill), c_char_p, c_uint32, c_void_p, c_int32,)),
    "qrb_pointcloud_query_fill_delete":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_query_fill),)),
    "qrb_pointcloud_query_fill_new":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), c_uint32, c_char_p, POINTER(POINTER(qrb_query_fill)),)),
    "qrb_pointcloud_query_fill_next":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_query_fill), c_uint32, POINTER(c_uint32),)),
    "qrb_pointcloud_query_fill_nodes_new":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), POINTER(c_uint32), c_uint32, c_char_p, POINTER(POINTER(qrb_query_fill)),)),
    "qrb_pointcloud_query_fill_progress":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_query_fill), POINTER(c_uint32),)),
    "qrb_pointcloud_query_insert_bind":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_query_insert), c_char_p, c_uint32, c_void_p, c_int32,)),
    "qrb_pointcloud_query_insert_bind_id":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_query_insert), c_uint32, c_void_p, c_int32,)),
    "qrb_pointcloud_query_insert_delete":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_query_insert),)),
    "qrb_pointcloud_query_insert_new":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), POINTER(POINTER(qrb_query_insert)),)),
    "qrb_pointcloud_query_insert_next":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_query_insert), c_uint32, POINTER(c_uint32),)),
    "qrb_pointcloud_query_invert_attribute":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_query_invert), c_char_p,)),
    "qrb_pointcloud_query_invert_delete":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_query_invert),)),
    "qrb_pointcloud_query_invert_new":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), c_uint32, c_char_p, POINTER(POINTER(qrb_query_invert)),)),
    "qrb_pointcloud_query_invert_next":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_query_invert), c_uint32, POINTER(c_uint32),)),
    "qrb_pointcloud_query_invert_nodes_new":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), POINTER(c_uint32), c_uint32, c_char_p, POINTER(POINTER(qrb_query_invert)),)),
    "qrb_pointcloud_query_invert_progress":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_query_invert), POINTER(c_uint32),)),
    "qrb_pointcloud_query_remove_bind":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_query_remove), c_uint32, c_void_p, c_int32,)),
    "qrb_pointcloud_query_remove_delete":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_query_remove),)),
    "qrb_pointcloud_query_remove_new":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), POINTER(POINTER(qrb_query_remove)),)),
    "qrb_pointcloud_query_remove_next":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_query_remove), c_uint32, POINTER(c_uint32),)),
    "qrb_pointcloud_query_select_bind":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_query_select), c_char_p, c_uint32, c_void_p, c_int32,)),
    "qrb_pointcloud_query_select_delete":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_query_select),)),
    "qrb_pointcloud_query_select_new":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), c_uint32, c_char_p, POINTER(POINTER(qrb_query_select)),)),
    "qrb_pointcloud_query_select_next":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_query_select), c_uint32, POINTER(c_uint32),)),
    "qrb_pointcloud_query_select_nodes_new":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), POINTER(c_uint32), c_uint32, c_char_p, POINTER(POINTER(qrb_query_select)),)),
    "qrb_pointcloud_query_select_progress":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_query_select), POINTER(c_uint32),)),
    "qrb_pointcloud_query_stat_delete":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_query_stat),)),
    "qrb_pointcloud_query_stat_index":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_query_stat), POINTER(qrb_graph_node),)),
    "qrb_pointcloud_query_stat_index_filter":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_query_stat), POINTER(qrb_graph_node), c_char_p,)),
    "qrb_pointcloud_query_stat_maximum":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_query_stat), c_uint32, c_char_p, c_uint32, c_void_p,)),
    "qrb_pointcloud_query_stat_maximum_cleaned":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_query_stat), c_uint32, c_char_p, c_uint32, c_void_p,)),
    "qrb_pointcloud_query_stat_minimum":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_query_stat), c_uint32, c_char_p, c_uint32, c_void_p,)),
    "qrb_pointcloud_query_stat_minimum_cleaned":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_query_stat), c_uint32, c_char_p, c_uint32, c_void_p,)),
    "qrb_pointcloud_query_stat_new":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), POINTER(POINTER(qrb_query_stat)),)),
    "qrb_pointcloud_query_stat_revision":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_query_stat), c_uint32, c_char_p, POINTER(c_uint32),)),
    "qrb_pointcloud_query_update_bind":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_query_update), c_char_p, c_uint32, c_void_p, c_int32,)),
    "qrb_pointcloud_query_update_delete":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_query_update),)),
    "qrb_pointcloud_query_update_new":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), POINTER(POINTER(qrb_query_update)),)),
    "qrb_pointcloud_query_update_next":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_query_update), c_uint32, POINTER(c_uint32),)),
    "qrb_pointcloud_transaction_begin":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), c_char_p, c_char_p, c_char_p, c_char_p, POINTER(c_uint32),)),
    "qrb_pointcloud_transaction_commit":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud),)),
    "qrb_pointcloud_transaction_commit_with_progress":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), qrb_progress_function, c_void_p,)),
    "qrb_pointcloud_transaction_commit_with_signature":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), qrb_progress_function, c_void_p, c_uint32, c_uint32, POINTER(c_uint8),)),
    "qrb_pointcloud_transaction_current":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), POINTER(c_uint32),)),
    "qrb_pointcloud_transaction_delete":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_transaction),)),
    "qrb_pointcloud_transaction_details":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), c_uint32, POINTER(qrb_transaction),)),
    "qrb_pointcloud_transaction_discard":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), c_uint32, POINTER(c_uint32),)),
    "qrb_pointcloud_transaction_get_agent":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_transaction), POINTER(c_char_p),)),
    "qrb_pointcloud_transaction_get_comments":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_transaction), POINTER(c_char_p),)),
    "qrb_pointcloud_transaction_get_id":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_transaction), POINTER(c_uint32),)),
    "qrb_pointcloud_transaction_get_qrb":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_transaction), POINTER(c_char_p),)),
    "qrb_pointcloud_transaction_get_settings":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_transaction), POINTER(c_char_p),)),
    "qrb_pointcloud_transaction_get_start":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_transaction), POINTER(c_char_p),)),
    "qrb_pointcloud_transaction_get_stop":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_transaction), POINTER(c_char_p),)),
    "qrb_pointcloud_transaction_get_title":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_transaction), POINTER(c_char_p),)),
    "qrb_pointcloud_transaction_list":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), POINTER(c_uint32), POINTER(c_uint32),)),
    "qrb_pointcloud_transaction_new":
        (qrb_status, (POINTER(qrb_context), POINTER(POINTER(qrb_transaction)),)),
    "qrb_pointcloud_transaction_pending":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), POINTER(c_uint8),)),
    "qrb_pointcloud_transaction_restore":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), c_uint32,)),
    "qrb_pointcloud_transaction_rollback":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud),)),
    "qrb_pointcloud_transaction_size":
        (qrb_status, (POINTER(qrb_context), POINTER(qrb_pointcloud), c_uint32, POINTER(c_uint32), POINTER(c_uint64),)),
    "qrb_result_delete_cf":
        (POINTER(qrb_result), (POINTER(qrb_result),)),
    "qrb_result_get_error_code_cf":
        (POINTER(qrb_result), (POINTER(qrb_result), POINTER(c_int32),)),
    "qrb_result_get_error_details_cf":
        (POINTER(qrb_result), (POINTER(qrb_result), POINTER(c_char_p),)),
    "qrb_result_get_error_text_cf":
        (POINTER(qrb_result), (POINTER(qrb_result), POINTER(c_char_p),)),
    "qrb_string_delete_cf":
        (POINTER(qrb_result), (c_char_p,)),
}
