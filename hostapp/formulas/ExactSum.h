#pragma once

#include <cmath>

/// A sum that keeps what rounding takes from it, so that values may also be taken out again. A value; any thread.
namespace plotix {

class ExactSum {
public:
    void add(double value)
    {
        const double sum = m_sum + value;
        m_lost += std::abs(m_sum) >= std::abs(value) ? (m_sum - sum) + value : (value - sum) + m_sum;
        m_sum = sum;
    }
    double value() const { return m_sum + m_lost; }

private:
    double m_sum = 0, m_lost = 0;
};

}  // namespace plotix
