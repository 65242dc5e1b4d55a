#pragma once

#include <cstdint>
#include <utility>
#include <variant>

namespace tarv {

/// Error number of the operating system (GetLastError); 0 means success and never stands in a failure.
using SystemCode = std::uint32_t;

namespace system_code {
inline constexpr SystemCode invalidFunction = 1;
inline constexpr SystemCode fileNotFound = 2;
inline constexpr SystemCode pathNotFound = 3;
inline constexpr SystemCode accessDenied = 5;
inline constexpr SystemCode invalidHandle = 6;
inline constexpr SystemCode noMoreFiles = 18;
inline constexpr SystemCode sharingViolation = 32;
inline constexpr SystemCode lockViolation = 33;
inline constexpr SystemCode notSupported = 50;
inline constexpr SystemCode invalidParameter = 87;
inline constexpr SystemCode elevationRequired = 740;
inline constexpr SystemCode unableToRemoveReplaced = 1175;
inline constexpr SystemCode unableToMoveReplacement = 1176;
inline constexpr SystemCode unableToMoveReplacement2 = 1177;
} // namespace system_code

template <class E>
struct Failure {
    E error;
};

template <class E>
Failure(E) -> Failure<E>;

/// What a call over the border answers: a value, or why there is none. The border never throws.
template <class T, class E = SystemCode>
class [[nodiscard]] Answer {
public:
    Answer(T value) : state_(std::in_place_index<0>, std::move(value)) {}
    Answer(Failure<E> failure) : state_(std::in_place_index<1>, std::move(failure.error)) {}

    explicit operator bool() const { return state_.index() == 0; }

    const T& operator*() const { return std::get<0>(state_); }
    T& operator*() { return std::get<0>(state_); }
    const T* operator->() const { return &std::get<0>(state_); }
    T* operator->() { return &std::get<0>(state_); }

    const E& error() const { return std::get<1>(state_); }

    T valueOr(T fallback) const { return *this ? **this : std::move(fallback); }

private:
    std::variant<T, E> state_;
};

} // namespace tarv
