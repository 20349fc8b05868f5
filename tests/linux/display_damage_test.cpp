#include "platform/linux/views/display_damage.h"

#include <cmath>

#include <gtest/gtest.h>

#include "platform/linux/views/view_renderer.h"
#include "tests/fixture/stage.h"

namespace {

using namespace platform;
using namespace platform::backend;

constexpr int width = 120;
constexpr int height = 1500;
constexpr CGSize screen{90, 400};

// Stripes, shifted by `moved` pixels from the row `movedFrom` on.
ImageRef stripes(int movedFrom, int moved, std::uint8_t alpha = 255) {
  auto palette = std::make_shared<Palette>();
  palette->colors = {{{200, 10, 10, alpha}, {10, 200, 10, alpha}, {10, 10, 200, alpha}}};
  palette->count = 3;
  const PictureShape shape{width, height, PixelFormat::Indexed};
  Strips strips;
  int y = 0;
  for (int index = 0; index < shape.stripCount(); ++index) {
    auto strip = shape.makeStrip(index);
    for (int row = 0; row < strip->rowCount(); ++row, ++y) {
      for (int x = 0; x < width; ++x) {
        strip->row(row)[x] =
            static_cast<std::uint8_t>((x + y + (y < movedFrom ? 0 : moved)) / 9 % 3);
      }
    }
    strips.push_back(std::move(strip));
  }
  return makeImage(shape, palette, std::move(strips));
}

// A screen with a colored background and an image view.
class Scene {
 public:
  Scene() {
    root->setFrame({0, 0, screen.width, screen.height});
    root->setBackgroundColor({0.3, 0.6, 0.2, 1});
    view->setFrame({5, 8, screen.width - 5, screen.height - 30});
    root->addSubview(view);
  }

  void draw(cairo_surface_t* surface, const CGRect& part) const {
    cairo_t* context = cairo_create(surface);
    cairo_rectangle(context, std::floor(part.x), std::floor(part.y),
                    std::ceil(part.x + part.width) - std::floor(part.x),
                    std::ceil(part.y + part.height) - std::floor(part.y));
    cairo_clip(context);
    renderView(*root, context);
    cairo_destroy(context);
    cairo_surface_flush(surface);
  }

  std::shared_ptr<UIView> root = std::make_shared<UIView>();
  std::shared_ptr<UIImageView> view = std::make_shared<UIImageView>();
};

cairo_surface_t* makeScreen() {
  return cairo_image_surface_create(CAIRO_FORMAT_RGB24, static_cast<int>(screen.width),
                                    static_cast<int>(screen.height));
}

// Returns the largest difference of a color channel. The fourth byte of a pixel is unused.
int largestDifference(cairo_surface_t* one, cairo_surface_t* other) {
  const int size = cairo_image_surface_get_stride(one) * static_cast<int>(screen.height);
  int largest = 0;
  for (int at = 0; at < size; ++at) {
    if (at % 4 == 3) continue;
    largest = std::max(largest, std::abs(cairo_image_surface_get_data(one)[at] -
                                         cairo_image_surface_get_data(other)[at]));
  }
  return largest;
}

TEST(DisplayDamage, CoversEverythingThatAFullRedrawWouldChange) {
  for (const auto mode : {UIViewContentMode::ScaleToFill, UIViewContentMode::ScaleAspectFit,
                          UIViewContentMode::ScaleAspectFill}) {
    for (const auto& [alpha, opacity, clips] :
         {std::tuple(255, 1.0F, true), {120, 1.0F, true}, {255, 0.5F, true}, {255, 1.0F, false}}) {
      Scene scene;
      scene.view->setContentMode(mode);
      scene.view->setAlpha(static_cast<CGFloat>(opacity));
      scene.view->setClipsToBounds(clips);
      const auto pictureAlpha = static_cast<std::uint8_t>(alpha);
      cairo_surface_t* kept = makeScreen();
      cairo_surface_t* fresh = makeScreen();
      scene.view->setImage(stripes(0, 0, pictureAlpha));
      scene.view->setImage(stripes(0, 0, pictureAlpha));
      scene.draw(kept, {0, 0, screen.width, screen.height});
      takePictureDamage(*scene.root);
      for (const int movedFrom : {1300, 700, 0}) {
        // Unchanged strips are shared, as they are when a file is read.
        const auto before = scene.view->image();
        auto next = stripes(movedFrom, 5, pictureAlpha);
        Strips strips = next->impl().strips;
        for (std::size_t at = 0; at < strips.size(); ++at) {
          const auto& old = before->impl().strips[at];
          if (std::ranges::equal(old->bytes(), strips[at]->bytes())) strips[at] = old;
        }
        scene.view->setImage(
            makeImage(next->impl().shape, before->impl().palette, std::move(strips)));
        const auto damage = takePictureDamage(*scene.root);
        ASSERT_TRUE(damage);
        const bool isSmall =
            clips && movedFrom == 1300 && mode != UIViewContentMode::ScaleAspectFill;
        EXPECT_TRUE(!isSmall || damage->height < screen.height / 2);
        scene.draw(kept, *damage);
        scene.draw(fresh, {0, 0, screen.width, screen.height});
        // The rounding of scaled pixels' positions depends on the part that is drawn.
        constexpr int roundingOfPlaces = 3;
        EXPECT_LE(largestDifference(kept, fresh), roundingOfPlaces)
            << static_cast<int>(mode) << " " << movedFrom;
      }
      cairo_surface_destroy(kept);
      cairo_surface_destroy(fresh);
    }
  }
}

TEST(DisplayDamage, IgnoresHiddenViewsAndSurvivesScreenshots) {
  Scene scene;
  cairo_surface_t* surface = makeScreen();
  scene.view->setImage(stripes(0, 0));
  scene.draw(surface, {0, 0, screen.width, screen.height});
  takePictureDamage(*scene.root);
  EXPECT_FALSE(takePictureDamage(*scene.root));

  scene.view->setImage(stripes(0, 1));
  scene.draw(surface, {0, 0, screen.width, screen.height});
  EXPECT_TRUE(takePictureDamage(*scene.root));

  scene.view->setHidden(true);
  scene.view->setImage(stripes(0, 2));
  EXPECT_FALSE(takePictureDamage(*scene.root));
  cairo_surface_destroy(surface);
}

}  // namespace
