// Stand-in for the host's AcArray. Covers the growing array with its own lengths and growth; leaves out the allocator parameter.
#pragma once

#include <algorithm>
#include <utility>

/// A growing array by value. Indices are int, as callers store them. An index outside the array is the
/// caller's fault and is not checked; functions that search return -1 for "none". T needs a default
/// constructor and assignment. New elements from setLogicalLength are value-initialised.
template <typename T>
class AcArray {
public:
    explicit AcArray(int physicalLength = 0, int growLength = 8)
        : m_growLength(std::max(growLength, 1)) {
        setPhysicalLength(physicalLength);
    }
    AcArray(const AcArray& other)
        : m_growLength(other.m_growLength) {
        assign(other);
    }
    AcArray(AcArray&& other) noexcept { swap(other); }
    AcArray& operator=(const AcArray& other) {
        if (this != &other) assign(other);
        return *this;
    }
    AcArray& operator=(AcArray&& other) noexcept {
        if (this != &other) swap(other);
        return *this;
    }
    ~AcArray() { delete[] m_data; }

    int length() const { return m_length; }
    int logicalLength() const { return m_length; }
    int physicalLength() const { return m_capacity; }
    int growLength() const { return m_growLength; }
    bool isEmpty() const { return m_length == 0; }

    T& operator[](int i) { return m_data[i]; }
    const T& operator[](int i) const { return m_data[i]; }
    T& at(int i) { return m_data[i]; }
    const T& at(int i) const { return m_data[i]; }
    T& first() { return m_data[0]; }
    const T& first() const { return m_data[0]; }
    T& last() { return m_data[m_length - 1]; }
    const T& last() const { return m_data[m_length - 1]; }
    const T* asArrayPtr() const { return m_data; }
    T* asArrayPtr() { return m_data; }
    T* begin() { return m_data; }
    T* end() { return m_data + m_length; }
    const T* begin() const { return m_data; }
    const T* end() const { return m_data + m_length; }

    AcArray& setAt(int i, const T& value) {
        m_data[i] = value;
        return *this;
    }
    AcArray& setAll(const T& value) {
        std::fill(begin(), end(), value);
        return *this;
    }

    /// Returns the index of the new element.
    int append(const T& value) {
        if (m_length == m_capacity) {
            T copy(value); // value may stand in this very array
            grow(m_length + 1);
            m_data[m_length] = std::move(copy);
        } else {
            m_data[m_length] = value;
        }
        return m_length++;
    }
    AcArray& append(const AcArray& other) {
        const int count = other.m_length;
        grow(m_length + count);
        std::copy(other.m_data, other.m_data + count, m_data + m_length);
        m_length += count;
        return *this;
    }
    AcArray& insertAt(int index, const T& value) {
        T copy(value);
        grow(m_length + 1);
        std::move_backward(m_data + index, m_data + m_length, m_data + m_length + 1);
        m_data[index] = std::move(copy);
        ++m_length;
        return *this;
    }
    AcArray& removeAt(int index) {
        std::move(m_data + index + 1, m_data + m_length, m_data + index);
        --m_length;
        return *this;
    }
    /// Removes the first element equal to value; returns whether there was one.
    bool remove(const T& value, int start = 0) {
        const int index = find(value, start);
        if (index < 0) return false;
        removeAt(index);
        return true;
    }
    AcArray& removeFirst() { return removeAt(0); }
    AcArray& removeLast() { return removeAt(m_length - 1); }
    AcArray& removeAll() { return setLogicalLength(0); }
    /// Removes the elements from start to end, both included.
    AcArray& removeSubArray(int start, int end) {
        std::move(m_data + end + 1, m_data + m_length, m_data + start);
        m_length -= end - start + 1;
        return *this;
    }
    int find(const T& value, int start = 0) const {
        for (int i = start; i < m_length; ++i)
            if (m_data[i] == value) return i;
        return -1;
    }
    bool find(const T& value, int& foundAt, int start) const {
        foundAt = find(value, start);
        return foundAt >= 0;
    }
    bool contains(const T& value, int start = 0) const { return find(value, start) >= 0; }
    AcArray& reverse() {
        std::reverse(begin(), end());
        return *this;
    }
    AcArray& swap(int i, int j) {
        std::swap(m_data[i], m_data[j]);
        return *this;
    }
    void swap(AcArray& other) noexcept {
        std::swap(m_data, other.m_data);
        std::swap(m_length, other.m_length);
        std::swap(m_capacity, other.m_capacity);
        std::swap(m_growLength, other.m_growLength);
    }

    AcArray& setGrowLength(int growLength) {
        m_growLength = std::max(growLength, 1);
        return *this;
    }
    AcArray& setLogicalLength(int length) {
        if (length > m_capacity) grow(length);
        if (length > m_length) std::fill(m_data + m_length, m_data + length, T());
        m_length = length;
        return *this;
    }
    /// Room for that many elements; fewer than the present length cuts the array.
    AcArray& setPhysicalLength(int capacity) {
        if (capacity == m_capacity) return *this;
        T* data = nullptr;
        m_length = std::min(m_length, capacity);
        if (capacity > 0) {
            data = new T[static_cast<std::size_t>(capacity)];
            std::move(m_data, m_data + m_length, data);
        }
        delete[] m_data;
        m_data = data;
        m_capacity = capacity;
        return *this;
    }

    bool operator==(const AcArray& other) const {
        return m_length == other.m_length && std::equal(begin(), end(), other.begin());
    }

private:
    void assign(const AcArray& other) {
        m_length = 0;
        if (other.m_length > m_capacity) setPhysicalLength(other.m_length);
        std::copy(other.m_data, other.m_data + other.m_length, m_data);
        m_length = other.m_length;
    }
    // Growth is at least by half, whatever the grow length says: appending a million elements stays linear.
    void grow(int wanted) {
        if (wanted > m_capacity)
            setPhysicalLength(std::max({wanted, m_capacity + m_growLength, m_capacity + m_capacity / 2}));
    }

    T* m_data = nullptr;
    int m_length = 0;
    int m_capacity = 0;
    int m_growLength = 8;
};
