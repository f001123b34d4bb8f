#pragma once

#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

#include "peers/peers.h"

namespace qxbench::peers {

cv::Mat matOf(QxFontEffect::ConstPlane8 plane);
cv::Mat matOf(QxFontEffect::Plane8 plane);
QxFontEffect::ConstPlane8 planeOf(const cv::Mat& mat);

/// A byte image with rows of whole 16-byte words, contents undefined.
cv::Mat newPlane(int width, int height);
cv::Mat newPlane(int width, int height, uint8_t value);

/// Taps of the library's bell, normalised: all positive with sum 1, so that OpenCV filters bytes in fixed point.
cv::Mat bellTaps(int radius, int peak);

/// Blurs bytes with the bell on both axes. What lies outside the image counts as 0; with a part of a larger image for
/// `src`, what lies outside the part is read from it.
void blurWithBell(const cv::Mat& src, int radius, int peak, cv::Mat& dst);

/// Distances up to `radius` from pixels with coverage.
cv::Mat distancesFrom(const cv::Mat& ink, int radius);

/// A disc of whole cells.
cv::Mat discOf(double radius);

/// Shift of a shadow in pixels.
cv::Point shiftOf(const QxFontEffect::QxShadowProperty& property);

}  // namespace qxbench::peers
