#include "peers/opencv_tools.h"

#include <cmath>

#include <pixman.h>

#include "peers/pixman_blend.h"

namespace qxbench::peers {

using namespace QxFontEffect;

namespace {

// The workers of OpenCV would make it another comparison.
const bool gOneThread = [] {
    cv::setNumThreads(1);
    return true;
}();

}  // namespace

std::string description() {
    return std::string("OpenCV ") + cv::getVersionString() + " (" + cv::getCPUFeaturesLine() + "), pixman " +
           pixman_version_string() + (gOneThread ? ", one thread" : "");
}

cv::Mat matOf(ConstPlane8 plane) {
    return cv::Mat(plane.height, plane.width, CV_8UC1, const_cast<uint8_t*>(plane.data),
                   static_cast<size_t>(plane.stride));
}

cv::Mat matOf(Plane8 plane) {
    return cv::Mat(plane.height, plane.width, CV_8UC1, plane.data, static_cast<size_t>(plane.stride));
}

ConstPlane8 planeOf(const cv::Mat& mat) {
    return {mat.data, mat.cols, mat.rows, static_cast<ptrdiff_t>(mat.step)};
}

cv::Mat newPlane(int width, int height) {
    return cv::Mat(height, alignedStride(width), CV_8UC1)(cv::Rect(0, 0, width, height));
}

cv::Mat newPlane(int width, int height, uint8_t value) {
    return cv::Mat(height, alignedStride(width), CV_8UC1, cv::Scalar(value))(cv::Rect(0, 0, width, height));
}

cv::Mat bellTaps(int radius, int peak) {
    cv::Mat taps(1, 2 * radius + 1, CV_32F);
    double sum = 0.0;
    for (int i = -radius; i <= radius; ++i) {
        const double q = radius * radius / 4.60517;
        const double weight = i == 0 ? peak : std::floor(std::exp(-i * i / q) * peak + 0.5);
        taps.at<float>(i + radius) = static_cast<float>(weight);
        sum += weight;
    }
    taps.convertTo(taps, CV_32F, 1.0 / sum);
    return taps;
}

void blurWithBell(const cv::Mat& src, int radius, int peak, cv::Mat& dst) {
    const cv::Mat taps = bellTaps(radius, peak);
    cv::sepFilter2D(src, dst, CV_8U, taps, taps, cv::Point(-1, -1), 0, cv::BORDER_CONSTANT);
}

cv::Mat distancesFrom(const cv::Mat& ink, int radius) {
    cv::Mat blank, distances;
    cv::threshold(ink, blank, 0, 255, cv::THRESH_BINARY_INV);
    cv::distanceTransform(blank, distances, cv::DIST_L2, cv::DIST_MASK_PRECISE);
    cv::min(distances, static_cast<double>(radius), distances);
    return distances;
}

cv::Mat discOf(double radius) {
    const int reach = static_cast<int>(radius + 0.5);
    cv::Mat disc(2 * reach + 1, 2 * reach + 1, CV_8UC1);
    for (int y = -reach; y <= reach; ++y)
        for (int x = -reach; x <= reach; ++x)
            disc.at<uint8_t>(y + reach, x + reach) = std::sqrt(x * x + y * y) <= radius + 0.5 ? 1 : 0;
    return disc;
}

cv::Point shiftOf(const QxShadowProperty& property) {
    const double turn = static_cast<double>(property.angle) * 3.14159265358979 / 180.0;
    return {static_cast<int>(std::lround(static_cast<double>(property.distance) * -std::cos(turn))),
            static_cast<int>(std::lround(static_cast<double>(property.distance) * std::sin(turn)))};
}

Step blur(ConstPlane8 src, int radius, int peak, Plane8 dst) {
    return [=] {
        cv::Mat into = matOf(dst);
        blurWithBell(matOf(src), radius, peak, into);
    };
}

Step distances(ConstPlane8 ink, int radius, PlaneF map) {
    return [=] {
        cv::Mat blank;
        cv::Mat into(map.height, map.width, CV_32FC1, map.data, static_cast<size_t>(map.stride) * sizeof(float));
        cv::threshold(matOf(ink), blank, 0, 255, cv::THRESH_BINARY_INV);
        cv::distanceTransform(blank, into, cv::DIST_L2, cv::DIST_MASK_PRECISE);
        cv::min(into, static_cast<double>(radius), into);
    };
}

Step maximum(ConstPlane8 mask, Plane8 dst) {
    return [=] {
        cv::Mat into = matOf(dst);
        cv::max(into, matOf(mask), into);
    };
}

Step unpremultiply(Plane32 picture) {
    return [=] {
        cv::Mat into(picture.height, picture.width, CV_8UC4, picture.data);
        cv::cvtColor(into, into, cv::COLOR_mRGBA2RGBA);
    };
}

Step swapRedBlue(Plane32 picture) {
    return [=] {
        cv::Mat into(picture.height, picture.width, CV_8UC4, picture.data);
        cv::cvtColor(into, into, cv::COLOR_RGBA2BGRA);
    };
}

}  // namespace qxbench::peers
