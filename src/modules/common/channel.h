#pragma once

/// Channels of an analog module, by the number with which they are addressed within it.
enum class Channel { A = 1, B = 2 };
