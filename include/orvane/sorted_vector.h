#ifndef ORVANE_SORTED_VECTOR_H_
#define ORVANE_SORTED_VECTOR_H_

#include <algorithm>
#include <cstddef>
#include <functional>
#include <initializer_list>
#include <memory>
#include <type_traits>
#include <utility>

/// A growable array kept in ascending order by `Compare`; with `Unique` it refuses a value that is
/// equivalent to one it holds.
///
/// Iterators are plain pointers. They, and references to elements, hold until the vector next
/// changes. An element may be changed through them as long as its place in the order stays.
///
/// Elements move whole: to make or close a gap they are moved by construction, never by assignment,
/// so a type whose assignment leaves some of its fields alone keeps those fields with its value.
///
/// When memory runs out, std::bad_alloc leaves the operation and nothing has changed. Several
/// threads may read one vector at once while none changes it.
template <typename T, bool Unique = false, typename Compare = std::less<T>>
class sorted_vector {
  static_assert(std::is_nothrow_move_constructible_v<T>);

 public:
  /// The types of a standard container.
  using value_type = T;
  using size_type = std::size_t;
  using difference_type = std::ptrdiff_t;
  using reference = T&;
  using const_reference = const T&;
  using iterator = T*;
  using const_iterator = const T*;

  /// Empty, without memory of its own.
  sorted_vector() = default;

  /// Inserts the values one by one.
  sorted_vector(std::initializer_list<T> values) : sorted_vector() {
    reserve(values.size());
    for (const T& value : values) insert(value);
  }

  /// Copies every element by construction.
  sorted_vector(const sorted_vector& other) : sorted_vector() {
    reserve(other.size());
    last_ = std::uninitialized_copy(other.begin(), other.end(), first_);
  }

  /// Takes the elements of `other`, which is left empty.
  sorted_vector(sorted_vector&& other) noexcept { swap(other); }

  ~sorted_vector() {
    clear();
    deallocate(first_, capacity());
  }

  /// Replaces all elements by exact copies of those of `other`.
  sorted_vector& operator=(const sorted_vector& other) {
    if (this != &other) sorted_vector(other).swap(*this);
    return *this;
  }

  /// Replaces all elements by those of `other`, which is left empty.
  sorted_vector& operator=(sorted_vector&& other) noexcept {
    sorted_vector taken(std::move(other));
    swap(taken);
    return *this;
  }

  /// Exchanges all elements; iterators stay with theirs.
  void swap(sorted_vector& other) noexcept {
    std::swap(first_, other.first_);
    std::swap(last_, other.last_);
    std::swap(limit_, other.limit_);
  }

  /// The elements in ascending order.
  iterator begin() { return first_; }
  iterator end() { return last_; }
  const_iterator begin() const { return first_; }
  const_iterator end() const { return last_; }
  const_iterator cbegin() const { return first_; }
  const_iterator cend() const { return last_; }

  /// How many elements there are, and for how many there is room before memory is allocated.
  size_type size() const { return static_cast<size_type>(last_ - first_); }
  size_type capacity() const { return static_cast<size_type>(limit_ - first_); }

  /// Whether there are no elements.
  bool empty() const { return first_ == last_; }

  /// REQUIRES: index < size().
  reference operator[](size_type index) { return first_[index]; }
  const_reference operator[](size_type index) const { return first_[index]; }

  /// REQUIRES: not empty().
  reference front() { return *first_; }
  const_reference front() const { return *first_; }
  reference back() { return last_[-1]; }
  const_reference back() const { return last_[-1]; }

  /// The first element that is not less than `value`; end() when there is none.
  iterator lower_bound(const T& value) { return std::lower_bound(first_, last_, value, Compare()); }
  const_iterator lower_bound(const T& value) const {
    return std::lower_bound(first_, last_, value, Compare());
  }

  /// The first element equivalent to `value`; end() when there is none.
  iterator find(const T& value) {
    const iterator found = lower_bound(value);
    return found != last_ && !Compare()(value, *found) ? found : last_;
  }
  const_iterator find(const T& value) const {
    return const_cast<sorted_vector*>(this)->find(value);
  }

  /// Inserts `value` at its ordered place and returns that place. With `Unique`, a value equivalent
  /// to an element inserts nothing, and the result is that element.
  iterator insert(T value) {
    const iterator place = lower_bound(value);
    return insert(place, std::move(value));
  }

  /// The same, given the likely place: in constant time to find when `place` keeps the order, as
  /// lower_bound() gives it.
  /// REQUIRES: `place` is an iterator of this vector.
  iterator insert(const_iterator place, T value) {
    iterator position = first_ + (place - first_);
    if (!keepsOrder(position, value)) {
      position = lower_bound(value);
      if (Unique && position != last_ && !Compare()(value, *position)) return position;
    }
    return placeAt(position, std::move(value));
  }

  /// Moves each element of `other` that has no equivalent here to its ordered place; the rest stay
  /// there. Only elements behind the first such place move. When memory runs out, nothing does.
  /// REQUIRES: `other` is not this vector, and both are in order.
  void merge(sorted_vector& other) {
    static_assert(Unique);
    const auto isNew = [this](const T& value) { return find(value) == last_; };
    const auto coming = static_cast<size_type>(std::count_if(other.first_, other.last_, isNew));
    if (size() + coming > capacity()) grow(std::max(size() + coming, 2 * capacity()), last_);
    T* held = last_;  // what is before it, and what is from `to` on, is in its place
    T* to = last_ += coming;
    T* staying = other.last_;
    for (T* next = other.last_; next != other.first_;) {
      --next;
      T* const place = std::lower_bound(first_, held, *next, Compare());
      if (place != held && !Compare()(*next, *place)) {
        if (--staying != next) relocate(next, staying);
        continue;
      }
      while (held != place) relocate(--held, --to);
      relocate(next, --to);
    }
    T* const stayEnd = other.last_;
    for (other.last_ = other.first_; staying != stayEnd; ++staying, ++other.last_) {
      if (staying != other.last_) relocate(staying, other.last_);
    }
  }

  /// Removes the element at `place`; returns the position of the one after it.
  /// REQUIRES: `place` is an iterator of this vector other than end().
  iterator erase(const_iterator place) {
    const iterator position = first_ + (place - first_);
    std::destroy_at(position);
    for (iterator next = position + 1; next != last_; ++next) relocate(next, next - 1);
    --last_;
    return position;
  }

  /// Removes each element that `isRemoved` holds for; they are asked in order.
  template <typename Predicate>
  void erase_if(Predicate isRemoved) {
    iterator kept = first_;
    for (iterator next = first_; next != last_; ++next) {
      if (isRemoved(std::as_const(*next))) {
        std::destroy_at(next);
      } else {
        if (kept != next) relocate(next, kept);
        ++kept;
      }
    }
    last_ = kept;
  }

  /// Removes all elements; the room stays.
  void clear() {
    std::destroy(first_, last_);
    last_ = first_;
  }

  /// Makes room for `count` elements in all.
  void reserve(size_type count) {
    if (count > capacity()) grow(count, last_);
  }

 private:
  static T* allocate(size_type count) { return std::allocator<T>().allocate(count); }
  static void deallocate(T* memory, size_type count) {
    if (memory != nullptr) std::allocator<T>().deallocate(memory, count);
  }

  static void relocate(T* from, T* to) {
    std::construct_at(to, std::move(*from));
    std::destroy_at(from);
  }

  // Equivalent neighbours are in order unless `Unique` refuses them.
  static bool inOrder(const T& left, const T& right) {
    return Unique ? Compare()(left, right) : !Compare()(right, left);
  }

  bool keepsOrder(iterator position, const T& value) const {
    return (position == first_ || inOrder(position[-1], value)) &&
           (position == last_ || inOrder(value, *position));
  }

  iterator placeAt(iterator position, T&& value) {
    if (last_ == limit_) {
      position = grow(std::max<size_type>(1, 2 * capacity()), position);
    } else {
      for (iterator to = last_; to != position; --to) relocate(to - 1, to);
    }
    std::construct_at(position, std::move(value));
    ++last_;
    return position;
  }

  // Moves all elements into larger storage, those from `gap` on one place further when an element
  // is about to be placed there. Returns the place of the gap.
  iterator grow(size_type count, iterator gap) {
    const auto before = static_cast<size_type>(gap - first_);
    const size_type held = size();
    T* const memory = allocate(count);
    for (size_type i = 0; i < held; ++i) relocate(first_ + i, memory + i + (i < before ? 0 : 1));
    deallocate(first_, capacity());
    first_ = memory;
    last_ = memory + held;
    limit_ = memory + count;
    return memory + before;
  }

  T* first_ = nullptr;
  T* last_ = nullptr;
  T* limit_ = nullptr;
};

#endif  // ORVANE_SORTED_VECTOR_H_
