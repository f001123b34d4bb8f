#pragma once

#include "SkRefCnt.h"

/// Only sRGB exists here, on both sides of every drawing call, so no colour is ever converted.
class SkColorSpace : public SkRefCnt {
public:
    static sk_sp<SkColorSpace> MakeSRGB() { return sk_make_sp<SkColorSpace>(); }
};
