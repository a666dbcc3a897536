#include "plotkit/model/TimeOrder.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cmath>
#include <memory>
#include <mutex>
#include <span>

namespace plotkit {

namespace {

/// How many times were looked at, how many of them are sorted, and the course of those.
struct Order {
    std::size_t checked = 0;
    std::size_t sorted = 0;
    std::shared_ptr<const TimeCourse> course;  // of no more than what is sorted
};

bool isInOrder(std::span<const double> x, std::size_t element)
{
    return std::isfinite(x[element]) && (element == 0 || x[element] >= x[element - 1]);
}

/// Goes on from what is known. Finite ends of a stretch that never decreases make all of it finite.
void look(Order& order, std::span<const double> x)
{
    const auto course = order.course ? std::make_shared<TimeCourse>(*order.course) : std::make_shared<TimeCourse>();
    order.course = course;
    constexpr std::size_t kStride = 4096;  // long enough to be read at memory speed, short enough to stop early
    if (order.sorted < order.checked)
        return;
    while (order.checked < x.size()) {
        const std::size_t first = order.checked;
        const std::size_t last = std::min(x.size(), first + kStride);
        int turns = isInOrder(x, first) && std::isfinite(x[last - 1]) ? 0 : 1;
        for (std::size_t element = first + 1; element < last; ++element)
            turns |= x[element] >= x[element - 1] ? 0 : 1;
        order.checked = last;
        order.sorted = last;
        if (turns == 0) {
            course->extend(x.first(last));  // while these are in the near cache
            continue;
        }
        for (order.sorted = first; isInOrder(x, order.sorted);)
            ++order.sorted;
        return;
    }
}

struct Known {
    std::weak_ptr<const double> times;
    Order order;
};

bool isOf(const Known& known, const plotix::PagedArray<double>& times)
{
    const std::shared_ptr<const double> owned = known.times.lock();
    const std::weak_ptr<const double> asked = times.weak();
    return owned && owned.get() == times.data() && !owned.owner_before(asked) && !asked.owner_before(owned);
}

class KnownOrders {
public:
    Order find(const plotix::PagedArray<double>& times)
    {
        const std::lock_guard lock(m_mutex);
        const auto found = place(times);
        return found == m_known.end() ? Order() : found->order;
    }
    void keep(const plotix::PagedArray<double>& times, const Order& order)
    {
        const std::lock_guard lock(m_mutex);
        auto known = place(times);
        if (known == m_known.end())
            known =
                std::find_if(m_known.begin(), m_known.end(), [](const Known& each) { return each.times.expired(); });
        if (known == m_known.end()) {
            known = m_known.begin() + static_cast<std::ptrdiff_t>(m_next);
            m_next = (m_next + 1) % m_known.size();
        }
        *known = {times.weak(), order};
    }

private:
    using Places = std::array<Known, 16>;
    Places::iterator place(const plotix::PagedArray<double>& times)
    {
        return std::find_if(m_known.begin(), m_known.end(), [&](const Known& each) { return isOf(each, times); });
    }

    std::mutex m_mutex;
    Places m_known;
    std::size_t m_next = 0;  // which is replaced when all are in use
};

KnownOrders& knownOrders()
{
    static KnownOrders& orders = *new KnownOrders;  // series may be made while static objects are destroyed
    return orders;
}

/// What is known once the first `count` times were looked at, or those before the first that is out of order.
Order orderOf(const plotix::PagedArray<double>& times, std::size_t count)
{
    assert(count <= times.size());
    Order order = knownOrders().find(times);
    if (order.checked < count && order.sorted == order.checked) {
        look(order, times.span().first(count));
        knownOrders().keep(times, order);
    }
    return order;
}

}  // namespace

bool areTimesSorted(const plotix::PagedArray<double>& times, std::size_t count)
{
    return count == 0 || count <= orderOf(times, count).sorted;
}

std::shared_ptr<const TimeCourse> courseOfTimes(const plotix::PagedArray<double>& times, std::size_t count)
{
    if (count == 0)
        return nullptr;
    const Order order = orderOf(times, count);
    return count <= order.sorted ? order.course : nullptr;
}

}  // namespace plotkit
