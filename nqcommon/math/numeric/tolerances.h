#pragma once

namespace NQMath_940 {

// Default relative tolerance of singularity tests and of quantile searches near an end.
inline constexpr double defaultepse = 1e-12;
// Below this a number counts as zero.
inline constexpr double defaultepsz = 1e-20;

}  // namespace NQMath_940
