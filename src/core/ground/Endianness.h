#pragma once

/// Byte order of stored numbers and of pixel masks: non-zero is little-endian, the only order in use.
inline constinit int _KXEndianness = -1;
