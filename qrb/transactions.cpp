#include "qrb/transactions.h"

#include "qrb/error.h"
#include "qrb/loader.h"
#include "qrb/progress.h"

#include <utility>

namespace tarvo::qrb::pointcloud {

namespace {

// Owns a library transaction record.
class TransactionHolder {
public:
    explicit TransactionHolder(const PointcloudData& data) : m_data(data) {
        data.check(functions().qrb_pointcloud_transaction_new(data.context.handle(), &m_handle));
    }
    ~TransactionHolder() {
        qrb_context* const context = m_data.context.handle();
        checkStatus(context, functions().qrb_pointcloud_transaction_delete(context, m_handle),
                    true);
    }
    TransactionHolder(const TransactionHolder&) = delete;
    TransactionHolder& operator=(const TransactionHolder&) = delete;

    qrb_transaction* get() const { return m_handle; }
    std::string text(qrb_status (*getter)(qrb_context*, const qrb_transaction*,
                                          const char**)) const {
        const char* result = nullptr;
        m_data.check(getter(m_data.context.handle(), m_handle, &result));
        return copyText(result);
    }

private:
    const PointcloudData& m_data;
    qrb_transaction* m_handle = nullptr;
};

}  // namespace

Transactions::Transactions(std::shared_ptr<PointcloudData> data) : m_data(std::move(data)) {}

std::uint32_t Transactions::begin(const std::string& title, const std::string& agent,
                                  const std::string& comments, const std::string& settings) {
    std::uint32_t id = 0;
    m_data->check(functions().qrb_pointcloud_transaction_begin(
        m_data->context.handle(), m_data->handle, title.c_str(), agent.c_str(), comments.c_str(),
        settings.c_str(), &id));
    return id;
}

void Transactions::commit(const Signature& signature, const Progress& progress) {
    ProgressTrampoline trampoline(progress);
    const std::int32_t status = functions().qrb_pointcloud_transaction_commit_with_signature(
        m_data->context.handle(), m_data->handle, trampoline.function(), trampoline.data(),
        signature.method, static_cast<std::uint32_t>(signature.key.size()), signature.key.data());
    trampoline.check(*m_data, status);
}

void Transactions::rollback() {
    m_data->check(
        functions().qrb_pointcloud_transaction_rollback(m_data->context.handle(), m_data->handle));
}

std::vector<std::uint32_t> Transactions::list() const {
    const auto function = functions().qrb_pointcloud_transaction_list;
    qrb_context* const context = m_data->context.handle();
    std::uint32_t count = 0;
    m_data->check(function(context, m_data->handle, &count, nullptr));
    std::vector<std::uint32_t> ids(count);
    if (count > 0) {
        m_data->check(function(context, m_data->handle, &count, ids.data()));
        if (count < ids.size()) {
            ids.resize(count);
        }
    }
    return ids;
}

std::uint32_t Transactions::current() const {
    std::uint32_t id = 0;
    m_data->check(functions().qrb_pointcloud_transaction_current(m_data->context.handle(),
                                                                 m_data->handle, &id));
    return id;
}

bool Transactions::pending() const {
    std::uint8_t pending = 0;
    m_data->check(functions().qrb_pointcloud_transaction_pending(m_data->context.handle(),
                                                                 m_data->handle, &pending));
    return pending != 0;
}

void Transactions::restore(std::uint32_t id) {
    m_data->check(functions().qrb_pointcloud_transaction_restore(m_data->context.handle(),
                                                                 m_data->handle, id));
}

void Transactions::discard(const std::vector<std::uint32_t>& ids) {
    m_data->check(functions().qrb_pointcloud_transaction_discard(
        m_data->context.handle(), m_data->handle, static_cast<std::uint32_t>(ids.size()),
        ids.data()));
}

std::uint64_t Transactions::size(const std::vector<std::uint32_t>& ids) const {
    std::uint64_t bytes = 0;
    m_data->check(functions().qrb_pointcloud_transaction_size(
        m_data->context.handle(), m_data->handle, static_cast<std::uint32_t>(ids.size()),
        ids.data(), &bytes));
    return bytes;
}

Transaction Transactions::details(std::uint32_t id) const {
    const FunctionTable& f = functions();
    const TransactionHolder holder(*m_data);
    m_data->check(f.qrb_pointcloud_transaction_details(m_data->context.handle(), m_data->handle, id,
                                                       holder.get()));
    Transaction record;
    m_data->check(
        f.qrb_pointcloud_transaction_get_id(m_data->context.handle(), holder.get(), &record.id));
    record.qrb = holder.text(f.qrb_pointcloud_transaction_get_qrb);
    record.title = holder.text(f.qrb_pointcloud_transaction_get_title);
    record.agent = holder.text(f.qrb_pointcloud_transaction_get_agent);
    record.comments = holder.text(f.qrb_pointcloud_transaction_get_comments);
    record.settings = holder.text(f.qrb_pointcloud_transaction_get_settings);
    record.start = holder.text(f.qrb_pointcloud_transaction_get_start);
    record.stop = holder.text(f.qrb_pointcloud_transaction_get_stop);
    return record;
}

TransactionGuard::TransactionGuard(Transactions& transactions, const std::string& title,
                                   const std::string& agent, const std::string& comments,
                                   const std::string& settings)
    : m_transactions(transactions), m_id(transactions.begin(title, agent, comments, settings)) {}

TransactionGuard::~TransactionGuard() {
    if (m_open) {
        try {
            m_transactions.rollback();
        } catch (...) {  // the failure that led here is the one to tell
        }
    }
}

void TransactionGuard::commit(const Signature& signature, const Progress& progress) {
    m_transactions.commit(signature, progress);
    m_open = false;
}

}  // namespace tarvo::qrb::pointcloud
