// Compares the Gaussian blur with OpenCV's on as many threads, both on opaque straight RGBA.

#include <algorithm>
#include <cmath>
#include <cstdio>

#include <opencv2/imgproc.hpp>

#include "bench/bench_peers.h"
#include "bench/pictures.h"
#include "bench/stopwatch.h"
#include "gifview/blur.h"
#include "platform/linux/images/picture/picture.h"

namespace bench {
namespace {

using platform::Bytes;
using platform::ImageRef;

struct Goal {
  int radius;
  double ratio;
};

// Returns the largest difference from a Gaussian in double precision, without the edges, because
// OpenCV does not treat the outside of an image as transparent.
double largestError(const Bytes& input, const Bytes& blurred, int radius) {
  const auto width = static_cast<std::size_t>(screenWidth);
  const int reach = 6 * radius;
  std::vector<double> weights;
  double total = 0;
  for (int at = -reach; at <= reach; ++at) {
    weights.push_back(std::exp(-at * at / (2.0 * radius * radius)));
    total += weights.back();
  }
  double largest = 0;
  // A sample of the pixels takes seconds, all pixels would take hours.
  for (int y = reach; y < screenHeight - reach; y += 311) {
    std::vector<double> column(width);
    for (std::size_t x = 0; x < width; ++x) {
      for (int at = -reach; at <= reach; ++at) {
        const auto row = static_cast<std::size_t>(y + at);
        column[x] +=
            weights[static_cast<std::size_t>(at + reach)] / total * input[(row * width + x) * 4];
      }
    }
    for (int x = reach; x < screenWidth - reach; x += 3) {
      double exact = 0;
      for (int at = -reach; at <= reach; ++at) {
        exact += weights[static_cast<std::size_t>(at + reach)] / total *
                 column[static_cast<std::size_t>(x + at)];
      }
      const auto place = static_cast<std::size_t>(y) * width + static_cast<std::size_t>(x);
      largest = std::max(largest, std::abs(exact - blurred[place * 4]));
    }
  }
  return largest;
}

}  // namespace

void benchBlur() {
  cv::setNumThreads(2);
  const Bytes pixels = photoPixels(screenWidth, screenHeight);
  const ImageRef picture = platform::backend::imageFromPixels(screenWidth, screenHeight, pixels);
  const cv::Mat matrix(screenHeight, screenWidth, CV_8UC4,
                       const_cast<std::uint8_t*>(pixels.data()));
  cv::Mat theirs;
  ImageRef ours;
  std::printf("## Gaussian blur of 1170x2532, against OpenCV on two threads\n\n");
  printRow({"radius", "ms", "OpenCV ms", "times as fast", "error", "OpenCV's"});
  printRow({"---", "---", "---", "---", "---", "---"});
  std::vector<std::pair<std::string, bool>> goals;
  for (const Goal& goal : {Goal{1, 1}, Goal{3, 1.2}, Goal{10, 7}, Goal{30, 40}}) {
    const auto times = medianMilliseconds(
        15, [] {},
        {[&] { ours = lumora::blurImageWithRadius(picture, goal.radius); },
         [&] { cv::GaussianBlur(matrix, theirs, cv::Size(), goal.radius, goal.radius); }});
    const Bytes result(theirs.datastart, theirs.dataend);
    const double error = largestError(pixels, platform::backend::pixelsOf(*ours), goal.radius);
    const double ratio = times[1] / times[0];
    printRow({std::to_string(goal.radius), rounded(times[0], 2), rounded(times[1], 2),
              rounded(ratio, 1), rounded(error, 2),
              rounded(largestError(pixels, result, goal.radius), 2)});
    goals.emplace_back(
        "radius " + std::to_string(goal.radius) + ": at least " + rounded(goal.ratio, 1) +
            " times as fast, error at most 1: " + rounded(ratio, 1) + ", " + rounded(error, 2),
        ratio >= goal.ratio && error <= 1);
  }
  std::printf("\n");
  for (const auto& [text, holds] : goals) printGoal(text, holds);
  const bool isSame = lumora::blurImageWithRadius(picture, 0) == picture;
  printGoal("radius 0: the picture itself", isSame);
  std::printf("\n");
}

}  // namespace bench
