// Every effect that the engine knows: its name, its parameters, its defaults, the pictures that it
// takes. Data only, for programs that run effects and for documentation made from it.
#pragma once

#include "engine/dib_format.h"
#include <zq/params.h>

#include <span>
#include <typeinfo>

enum class ParameterKind {
    Number,   // a signed word
    Unsigned, // an unsigned word
    Choice,   // a signed word, each value of which has a name
    Colour,   // an unsigned word: byte 0 red, 1 green, 2 blue
    Numbers,  // `count` signed words
    Bytes,    // `count` bytes, or a curve file to take them from
    File,     // no field of its own: a filter file that fills the record
};

struct ParameterChoice {
    const char* name;
    i32 value;
};

struct EffectParameter {
    const char* name; // of the record's field, but for ParameterKind::File
    ParameterKind kind;
    std::size_t offset; // of the field, in bytes from the record's start
    std::size_t count = 1;
    i64 smallest = 0; // the values that are offered, both ends included
    i64 largest = 0;
    bool refusesZero = false;
    std::span<const ParameterChoice> choices = {};
    const char* help = "";
};

// A set of image classes.
using ImageClasses = u32;
constexpr ImageClasses ClassBit(ImageClass imageClass) {
    return 1u << static_cast<u32>(imageClass);
}

struct EffectDescription {
    EffectId id;
    const char* name;  // for the command line, such as gaussian-blur
    const char* title; // for people, such as Gaussian Blur
    const char* help;  // what it does to a picture, one line
    ImageClasses takes;
    std::span<const EffectParameter> parameters;
    // The record with all defaults, chosen so that an effect shows; null for an effect without one.
    const void* defaults;
    std::size_t recordBytes;
    const std::type_info* recordType = nullptr; // a structure of zq/params.h
    // Fields that nobody chooses; their value is that of the defaults.
    std::span<const EffectParameter> otherFields = {};
};

// All effects by rising number.
std::span<const EffectDescription> EffectTable();

// The row of an effect; null for a number that the engine does not know.
const EffectDescription* FindEffect(EffectId id);
