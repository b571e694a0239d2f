#pragma once

#include <QtGlobal>
#include <cstddef>

#include "runtime/fault.h"

// Integer arithmetic that faults with "Overflow" where the plain operators would wrap, and array
// access that faults with "Subscript out of range".

namespace tarnwick::runtime {

template <class Int>
Int add(Int a, Int b) {
    Int result;
    if (__builtin_add_overflow(a, b, &result)) overflow();
    return result;
}

template <class Int>
Int subtract(Int a, Int b) {
    Int result;
    if (__builtin_sub_overflow(a, b, &result)) overflow();
    return result;
}

template <class Int>
Int multiply(Int a, Int b) {
    Int result;
    if (__builtin_mul_overflow(a, b, &result)) overflow();
    return result;
}

// Floating-point quotient; a zero divisor is "Division by zero".
inline double divide(double dividend, double divisor) {
    if (divisor == 0.0) divisionByZero();
    return dividend / divisor;
}

template <class Array>
auto& element(Array& array, qint64 index) {
    if (index < 0 || index >= static_cast<qint64>(std::size(array))) subscriptOutOfRange();
    return array[static_cast<std::size_t>(index)];
}

}  // namespace tarnwick::runtime
