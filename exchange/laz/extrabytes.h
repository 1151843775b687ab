// Bytes of a record that no point format knows: each by its difference from the last one.
#pragma once

#include "exchange/laz/models.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace tarvo::exchange::laz {

class ExtraByteModels {
public:
    // Forgets everything; there are models for so many bytes from the first use of each.
    void begin() { m_hasBegun.assign(m_hasBegun.size(), false); }

    template <typename Coder>
    std::uint8_t code(Coder& coder, std::size_t i, std::uint8_t last, std::uint8_t now) {
        if (i >= m_models.size()) {
            m_models.resize(i + 1);
            m_hasBegun.resize(i + 1);
        }
        if (!m_models[i]) {
            m_models[i].reset(new SymbolModel<256>);
        }
        if (!m_hasBegun[i]) {
            m_hasBegun[i] = true;
            m_models[i]->begin();
        }
        const unsigned difference =
            coder.symbol(*m_models[i], static_cast<std::uint8_t>(now - last));
        return static_cast<std::uint8_t>(last + difference);
    }

private:
    std::vector<std::unique_ptr<SymbolModel<256>>> m_models;
    std::vector<char> m_hasBegun;
};

}  // namespace tarvo::exchange::laz
