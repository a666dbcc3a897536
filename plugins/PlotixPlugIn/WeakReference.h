#pragma once

#include <memory>

/// References to delegates that are not owned and become empty by themselves.
///
/// A protocol derives from `WeaklyReferenced`; whoever holds its implementer keeps a `WeakReference`, which answers
/// null once the implementer has gone. Main thread only.
class WeaklyReferenced {
public:
    WeaklyReferenced() : m_lifetime(std::make_shared<char>()) {}
    virtual ~WeaklyReferenced() = default;
    WeaklyReferenced(const WeaklyReferenced&) = delete;
    WeaklyReferenced& operator=(const WeaklyReferenced&) = delete;

    std::weak_ptr<const void> weakLifetime() const { return m_lifetime; }

private:
    std::shared_ptr<const void> m_lifetime;  // owns; expires with the object
};

/// T derives from WeaklyReferenced.
template <class T>
class WeakReference {
public:
    WeakReference() = default;
    WeakReference(T* object) : m_object(object)
    {
        if (object)
            m_lifetime = object->weakLifetime();
    }

    T* get() const { return m_lifetime.expired() ? nullptr : m_object; }
    explicit operator bool() const { return get() != nullptr; }
    T* operator->() const { return get(); }

private:
    T* m_object = nullptr;
    std::weak_ptr<const void> m_lifetime;
};
