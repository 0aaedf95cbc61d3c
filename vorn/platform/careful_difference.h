#pragma once

/// minuend - subtrahend, guarded against binary rounding: 2.3 - 0.1 is 2.2 and not 2.1999999999999997.
///
/// Whole parts and fractions are subtracted apart, the fractions cut to ten decimal places first, and of that result
/// and the plain difference the one of larger magnitude is taken. Values with ten decimals or fewer are meant:
/// lengths and heights in metres. Unset counts as 0.
[[nodiscard]] double NurCarefulDifference(double minuend, double subtrahend);
