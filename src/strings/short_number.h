// Numbers of everyday size written faster than the C library writes them, in the same digits.
#ifndef BRCORE8_SRC_STRINGS_SHORT_NUMBER_H
#define BRCORE8_SRC_STRINGS_SHORT_NUMBER_H

namespace brcore8 {

constexpr int kShortNumber = 16;  // bytes of the longest

// What "%g" writes for the value, with the C locale's decimal point as it is set, and its end; null
// when the value is none of those that come out as a plain decimal number of up to six digits, or
// when rounding it takes more precision than a double has.
char* PutShortNumber(double value, char* out) noexcept;

}  // namespace brcore8

#endif
