#pragma once

/// Owns one object for a scope: iterators that a container hands out, curves that a conversion gives, a
/// document lock that an opening tool leaves to its caller.
///
/// The destructor releases the object through the delete that its class brings: a host's geometry goes back
/// to the host's allocator, all else through its virtual destructor. T is complete where the guard dies.
template <typename T>
class VEXOSmartPointer {
public:
    /// Null is allowed and releases nothing.
    explicit VEXOSmartPointer(T* owned = nullptr)
        : m_owned(owned) {}
    virtual ~VEXOSmartPointer() {
        delete m_owned;
        m_owned = nullptr;
    }
    VEXOSmartPointer(const VEXOSmartPointer&) = delete;
    VEXOSmartPointer& operator=(const VEXOSmartPointer&) = delete;

    T* object() const { return m_owned; }
    T* operator->() const { return m_owned; }
    T& operator*() const { return *m_owned; }
    explicit operator bool() const { return m_owned != nullptr; }

private:
    T* m_owned;
};
