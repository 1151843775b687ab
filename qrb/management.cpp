#include "qrb/management.h"

#include "qrb/loader.h"
#include "qrb/progress.h"

#include <utility>

namespace tarvo::qrb::pointcloud {

Management::Management(std::shared_ptr<PointcloudData> data) : m_data(std::move(data)) {}

void Management::finalize() {
    m_data->check(
        functions().qrb_pointcloud_management_finalize(m_data->context.handle(), m_data->handle));
}

void Management::vacuum(const Progress& progress) {
    ProgressTrampoline trampoline(progress);
    const std::int32_t status = functions().qrb_pointcloud_management_vacuum(
        m_data->context.handle(), m_data->handle, trampoline.function(), trampoline.data());
    trampoline.check(*m_data, status);
}

std::optional<std::uint64_t> Management::unusedSize() const {
    const auto ask = optionalFunctions().qrb_pointcloud_management_unused_size;
    if (ask == nullptr)
        return std::nullopt;
    std::uint64_t bytes = 0;
    m_data->check(ask(m_data->context.handle(), m_data->handle, &bytes));
    return bytes;
}

void Management::validate(const std::string& schema, bool strict) const {
    m_data->check(functions().qrb_pointcloud_management_validate(
        m_data->context.handle(), m_data->handle, schema.c_str(), strict ? 1 : 0));
}

Findings Management::findings(const std::string& schema, bool strict) const {
    return findingsOf(
        *m_data, functions().qrb_pointcloud_management_validate(
                     m_data->context.handle(), m_data->handle, schema.c_str(), strict ? 1 : 0));
}

std::uint32_t Management::getLodMode() const {
    std::uint32_t mode = 0;
    m_data->check(functions().qrb_pointcloud_management_get_lod_mode(m_data->context.handle(),
                                                                     m_data->handle, &mode));
    return mode;
}

void Management::setLodMode(std::uint32_t mode) {
    m_data->check(functions().qrb_pointcloud_management_set_lod_mode(m_data->context.handle(),
                                                                     m_data->handle, mode));
}

std::uint32_t Management::getChunkSizeLOD() const {
    std::uint32_t size = 0;
    m_data->check(functions().qrb_pointcloud_management_get_chunk_size_lod(m_data->context.handle(),
                                                                           m_data->handle, &size));
    return size;
}

void Management::setChunkSizeLOD(std::uint32_t size) {
    m_data->check(functions().qrb_pointcloud_management_set_chunk_size_lod(m_data->context.handle(),
                                                                           m_data->handle, size));
}

}  // namespace tarvo::qrb::pointcloud
