#pragma once
// A forward iterator over the 1-based positions of a collection. It keeps the collection and a
// position and reads the item there (through the collection's member `Read`) only when
// dereferenced, so a walk sees the collection as it is at each step.

#include <QtGlobal>
#include <cstddef>

template <typename Owner, typename Value, auto Read> class PositionIterator {
public:
    using difference_type = std::ptrdiff_t;
    using value_type = Value;

    PositionIterator() = default;
    PositionIterator(const Owner *owner, qint32 position) : m_owner(owner), m_position(position) {}

    decltype(auto) operator*() const { return (m_owner->*Read)(m_position); }
    PositionIterator &operator++() {
        ++m_position;
        return *this;
    }
    PositionIterator operator++(int) {
        PositionIterator old = *this;
        ++m_position;
        return old;
    }
    bool operator==(const PositionIterator &other) const { return m_position == other.m_position; }

private:
    const Owner *m_owner = nullptr;
    qint32 m_position = 1;
};
