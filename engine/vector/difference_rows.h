// Rows of differences from a mean, and what they do to the samples.
#pragma once

#include "platform/types.h"

#include <cstddef>

// How far each sample is above its mean, or one less than how far it is below it: so that
// darkening sets in one step later than lightening.
void StepsFrom(const u8* means, const u8* samples, u8* steps, std::size_t count);

// Moves each sample away from its mean by a distance; one that equals its mean becomes lighter.
// `to` may be `means`.
void MoveAway(const u8* means, const u8* samples, const u8* distances, u8* to, std::size_t count);
