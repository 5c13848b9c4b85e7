// CArray and the arrays made of it: index-checked, growing, elements in one block. Header only.
//
// An index outside the array, or a negative size, throws the invalid-argument exception. New elements are
// value-initialised (numbers and pointers are 0). Arrays are not copied by assignment; Copy says what it does.
// Pointers to elements die when the array grows.
#pragma once

#include "quor/platform/base/Strings.h"

#include <algorithm>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

template <class TYPE, class ARG_TYPE = const TYPE&>
class CArray {
public:
    CArray() = default;
    CArray(const CArray&) = delete;
    CArray& operator=(const CArray&) = delete;
    ~CArray() { freeAll(); }

    INT_PTR GetSize() const { return m_size; }
    INT_PTR GetCount() const { return m_size; }
    INT_PTR GetUpperBound() const { return m_size - 1; }  // -1 when empty
    BOOL IsEmpty() const { return m_size == 0; }

    // Size 0 frees the block. growBy: elements to add room for when the array must grow; 0 leaves it to the array
    // (half of its size), negative keeps what was set before.
    void SetSize(INT_PTR newSize, INT_PTR growBy = -1) {
        if (newSize < 0) AfxThrowInvalidArgException();
        if (growBy >= 0) m_growBy = growBy;
        if (newSize == 0) {
            freeAll();
            return;
        }
        if (newSize > m_capacity) reallocate(grownCapacity(newSize));
        if (newSize > m_size)
            std::uninitialized_value_construct(m_data + m_size, m_data + newSize);
        else
            std::destroy(m_data + newSize, m_data + m_size);
        m_size = newSize;
    }
    void FreeExtra() {
        if (m_size == 0)
            freeAll();
        else if (m_capacity > m_size)
            reallocate(m_size);
    }
    void RemoveAll() { SetSize(0); }

    TYPE& ElementAt(INT_PTR index) {
        check(index);
        return m_data[index];
    }
    const TYPE& ElementAt(INT_PTR index) const {
        check(index);
        return m_data[index];
    }
    TYPE& GetAt(INT_PTR index) { return ElementAt(index); }
    const TYPE& GetAt(INT_PTR index) const { return ElementAt(index); }
    TYPE& operator[](INT_PTR index) { return ElementAt(index); }
    const TYPE& operator[](INT_PTR index) const { return ElementAt(index); }
    void SetAt(INT_PTR index, ARG_TYPE element) { ElementAt(index) = element; }
    // Null when the array never held anything.
    TYPE* GetData() { return m_data; }
    const TYPE* GetData() const { return m_data; }

    // Grows to hold the index; elements between are value-initialised. The argument may lie in this array.
    void SetAtGrow(INT_PTR index, ARG_TYPE element) {
        if (index < 0) AfxThrowInvalidArgException();
        if (index < m_size) {
            m_data[index] = element;
        } else if (index < m_capacity) {
            SetSize(index + 1);
            m_data[index] = element;
        } else {
            TYPE copy(element);
            SetSize(index + 1);
            m_data[index] = std::move(copy);
        }
    }
    // The index of the new element.
    INT_PTR Add(ARG_TYPE element) {
        if (m_size < m_capacity) {
            ::new (static_cast<void*>(m_data + m_size)) TYPE(element);
        } else {
            TYPE copy(element);
            reallocate(grownCapacity(m_size + 1));
            ::new (static_cast<void*>(m_data + m_size)) TYPE(std::move(copy));
        }
        return m_size++;
    }
    // The index of the first appended element. The source must be another array.
    INT_PTR Append(const CArray& source) {
        ASSERT(this != &source);
        const INT_PTR first = m_size;
        SetSize(m_size + source.m_size);
        std::copy(source.m_data, source.m_data + source.m_size, m_data + first);
        return first;
    }
    // Makes this array equal to the source.
    void Copy(const CArray& source) {
        if (this == &source) return;
        SetSize(source.m_size);
        std::copy(source.m_data, source.m_data + source.m_size, m_data);
    }

    // `count` copies in front of the element at `index`; an index beyond the end grows the array to it.
    void InsertAt(INT_PTR index, ARG_TYPE element, INT_PTR count = 1) {
        if (index < 0 || count < 0) AfxThrowInvalidArgException();
        if (count == 0) return;
        const TYPE copy(element);
        openGap(index, count);
        std::fill(m_data + index, m_data + index + count, copy);
    }
    // Another array's elements in front of the element at `index`.
    void InsertAt(INT_PTR index, const CArray* source) {
        if (index < 0 || source == nullptr || source == this) AfxThrowInvalidArgException();
        if (source->m_size == 0) return;
        openGap(index, source->m_size);
        std::copy(source->m_data, source->m_data + source->m_size, m_data + index);
    }
    // Keeps the room.
    void RemoveAt(INT_PTR index, INT_PTR count = 1) {
        if (index < 0 || count < 0 || count > m_size || index > m_size - count) AfxThrowInvalidArgException();
        std::move(m_data + index + count, m_data + m_size, m_data + index);
        std::destroy(m_data + m_size - count, m_data + m_size);
        m_size -= count;
    }

private:
    using Allocator = std::allocator<TYPE>;

    void check(INT_PTR index) const {
        if (static_cast<UINT_PTR>(index) >= static_cast<UINT_PTR>(m_size)) AfxThrowInvalidArgException();
    }
    INT_PTR grownCapacity(INT_PTR needed) const {
        const INT_PTR growBy = m_growBy > 0 ? m_growBy : std::max<INT_PTR>(m_size / 2, 4);
        return m_capacity == 0 && m_growBy <= 0 ? needed : std::max(needed, m_capacity + growBy);
    }
    void openGap(INT_PTR index, INT_PTR count) {
        const INT_PTR old = m_size;
        SetSize(std::max(index, old) + count);
        if (index < old) std::move_backward(m_data + index, m_data + old, m_data + old + count);
    }
    void reallocate(INT_PTR capacity) {
        TYPE* const made = Allocator().allocate(static_cast<std::size_t>(capacity));
        std::uninitialized_move(m_data, m_data + m_size, made);
        std::destroy(m_data, m_data + m_size);
        freeBlock();
        m_data = made;
        m_capacity = capacity;
    }
    void freeBlock() {
        if (m_data != nullptr) Allocator().deallocate(m_data, static_cast<std::size_t>(m_capacity));
    }
    void freeAll() {
        std::destroy(m_data, m_data + m_size);
        freeBlock();
        m_data = nullptr;
        m_size = 0;
        m_capacity = 0;
    }

    TYPE* m_data = nullptr;
    INT_PTR m_size = 0;
    INT_PTR m_capacity = 0;
    INT_PTR m_growBy = 0;
};

using CStringArray = CArray<CString, LPCSTR>;
using CByteArray = CArray<BYTE, BYTE>;
using CWordArray = CArray<WORD, WORD>;
using CDWordArray = CArray<DWORD, DWORD>;
using CUIntArray = CArray<UINT, UINT>;
using CPtrArray = CArray<void*, void*>;
