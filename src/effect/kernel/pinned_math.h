#pragma once

namespace QxFontEffect {

/// Elementary functions of a float that give the same bits on every machine.
///
/// A kernel weight, a shadow's shift and a light vector are made by truncating or rounding one of these values, so the
/// last bit can decide a pixel, and C libraries differ in the last bit. These use nothing but + - * / and integer
/// operations, which IEEE 754 fixes, and no table of the C library.
///
/// How far each is pinned (the test beside it compares with the C library it runs on; GNU 2.36 was used here):
/// - `pinnedExp`: within 2^-51 relative before the one rounding to float, so correctly rounded except where exp(x)
///   lies within 2^-27 ulp of the middle between two floats. Other libraries' expf may differ in the last bit; the
///   bell weights made of it are the same for every radius from 0 to 4096 and both scales.
/// - `pinnedSin`, `pinnedCos`: equal to GNU sinf and cosf bit for bit for every angle of -720 to 720 degrees in steps
///   of 1/8, in each of the effects' ways to turn it into radians (and wherever else they were compared); within
///   0.57 ulp of the true value.
/// - `pinnedTan`: the same with GNU tanf; within 1 ulp of the true value.
///
/// All of them return NaN for NaN, and for infinite x except `pinnedExp`, which gives +infinity or 0.
float pinnedExp(float x);
float pinnedSin(float x);
float pinnedCos(float x);
float pinnedTan(float x);

}  // namespace QxFontEffect
