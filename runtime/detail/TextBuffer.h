#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

namespace tarv {

/// Text under construction. Numbers are read and formatted by the thousand, so short texts stay on the stack.
class TextBuffer {
public:
    TextBuffer() = default;
    TextBuffer(const TextBuffer&) = delete;
    TextBuffer& operator=(const TextBuffer&) = delete;

    void append(wchar_t character) {
        if (size_ == capacity_)
            grow();
        data_[size_++] = character;
    }

    void append(std::wstring_view text) {
        for (const wchar_t character : text)
            append(character);
    }

    std::wstring_view view() const { return {data_, size_}; }
    std::size_t size() const { return size_; }

    bool contains(wchar_t character) const { return find(character) != size_; }

    /// Index of the first such character; size() when there is none.
    std::size_t find(wchar_t character) const {
        return static_cast<std::size_t>(std::find(data_, data_ + size_, character) - data_);
    }

    void removeAt(std::size_t index) {
        std::copy(data_ + index + 1, data_ + size_, data_ + index);
        --size_;
    }

    void removeAll(wchar_t character) {
        size_ = static_cast<std::size_t>(std::remove(data_, data_ + size_, character) - data_);
    }

    void replaceAll(wchar_t character, wchar_t replacement) {
        std::replace(data_, data_ + size_, character, replacement);
    }

private:
    void grow() {
        std::vector<wchar_t> larger(capacity_ * 2);
        std::copy(data_, data_ + size_, larger.begin());
        heap_ = std::move(larger);
        data_ = heap_.data();
        capacity_ = heap_.size();
    }

    std::array<wchar_t, 64> stack_;
    std::vector<wchar_t> heap_;
    wchar_t* data_ = stack_.data();
    std::size_t capacity_ = stack_.size();
    std::size_t size_ = 0;
};

} // namespace tarv
