#pragma once

#include <cstddef>
#include <initializer_list>
#include <utility>
#include <vector>

namespace vela {

// SimpleVector is the growable array that lists of every layer are made of: push_back, resize, size
// and indexing.
//
// Appending is amortised constant time; memory grows by at least kGrowth elements at a time, so
// that short lists don't reallocate at every step. Indexing is not checked. Pointers into it are
// good until the next growth. A SimpleVector of pointers does not own what they point to; its
// holder says who does.
template <class T>
class SimpleVector {
public:
    SimpleVector() = default;
    SimpleVector(std::initializer_list<T> items) : mItems(items) {}
    // Of that many value-initialised elements.
    [[nodiscard]] static SimpleVector OfSize(size_t count)
    {
        SimpleVector made;
        made.mItems.resize(count);
        return made;
    }

    // item may be an element of this list.
    void push_back(const T& item)
    {
        if (mItems.size() == mItems.capacity()) {
            push_back(T(item));
            return;
        }
        mItems.push_back(item);
    }
    void push_back(T&& item)
    {
        if (mItems.size() == mItems.capacity()) {
            T kept(std::move(item));
            GrowForOneMore();
            mItems.push_back(std::move(kept));
            return;
        }
        mItems.push_back(std::move(item));
    }
    // New elements are value-initialised: numbers 0, pointers null.
    void resize(size_t count) { mItems.resize(count); }
    void reserve(size_t count) { mItems.reserve(count); }
    // The next push_back takes no memory.
    void MakeRoomForOne()
    {
        if (mItems.size() == mItems.capacity())
            GrowForOneMore();
    }
    void clear() { mItems.clear(); }
    void pop_back() { mItems.pop_back(); }
    // Closes the gap: later elements move down one place.
    void erase(size_t index) { mItems.erase(mItems.begin() + static_cast<std::ptrdiff_t>(index)); }
    // Gives memory beyond the elements back.
    void shrink_to_fit() { mItems.shrink_to_fit(); }
    void swap(SimpleVector& other) noexcept { mItems.swap(other.mItems); }

    [[nodiscard]] size_t size() const { return mItems.size(); }
    [[nodiscard]] bool empty() const { return mItems.empty(); }
    [[nodiscard]] size_t capacity() const { return mItems.capacity(); }

    T& operator[](size_t index) { return mItems[index]; }
    const T& operator[](size_t index) const { return mItems[index]; }
    T& back() { return mItems.back(); }
    const T& back() const { return mItems.back(); }
    T* data() { return mItems.data(); }
    const T* data() const { return mItems.data(); }
    auto begin() { return mItems.begin(); }
    auto end() { return mItems.end(); }
    auto begin() const { return mItems.begin(); }
    auto end() const { return mItems.end(); }

private:
    static constexpr size_t kGrowth = 16;

    void GrowForOneMore()
    {
        const size_t step = mItems.size() / 2 > kGrowth ? mItems.size() / 2 : kGrowth;
        mItems.reserve(mItems.size() + step);
    }

    std::vector<T> mItems;
};

}   // namespace vela
