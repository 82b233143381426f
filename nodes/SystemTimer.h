#pragma once
// The clock the control times itself with: seconds since local midnight, single precision (its
// step is about 4 ms late in the day, as the figures it produces have always had).

// Reads the clock.
float secondsSinceMidnight();
