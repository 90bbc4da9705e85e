#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>

namespace vela {

// ShortArray is an array whose length is told when it is made and mostly small: up to inside elements lie in the object itself
// and take no memory of their own.
template <class T, size_t inside>
class ShortArray {
public:
    // count copies of value.
    ShortArray(size_t count, const T& value)
        : mCount(count), mOutside(count > inside ? new T[count] : nullptr)
    {
        std::fill(begin(), end(), value);
    }
    ShortArray(const ShortArray&) = delete;
    ShortArray& operator=(const ShortArray&) = delete;

    [[nodiscard]] size_t size() const { return mCount; }
    [[nodiscard]] T* data() { return mOutside ? mOutside.get() : mInside; }
    [[nodiscard]] const T* data() const { return mOutside ? mOutside.get() : mInside; }
    T& operator[](size_t index) { return data()[index]; }
    const T& operator[](size_t index) const { return data()[index]; }
    T* begin() { return data(); }
    T* end() { return data() + mCount; }
    const T* begin() const { return data(); }
    const T* end() const { return data() + mCount; }

private:
    size_t mCount;
    std::unique_ptr<T[]> mOutside;
    T mInside[inside];
};

}   // namespace vela
