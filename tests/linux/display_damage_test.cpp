#include "platform/linux/views/display_damage.h"

#include <gtest/gtest.h>

#include "platform/linux/views/view_renderer.h"
#include "tests/fixture/stage.h"
#include "tests/fixture/surfaces.h"

namespace {

using namespace platform;
using namespace platform::backend;
using testing_stage::largestDifference;

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

  Region takeDamage() const { return damageOf(takeChangedViews(*root), *root, 1); }

  void draw(cairo_surface_t* surface, const Region& part = whole()) const {
    cairo_t* context = cairo_create(surface);
    clipTo(context, part);
    renderView(*root, context);
    cairo_destroy(context);
    cairo_surface_flush(surface);
  }

  static Region whole() {
    return Region({0, 0, static_cast<int>(screen.width), static_cast<int>(screen.height)});
  }

  std::shared_ptr<UIView> root = std::make_shared<UIView>();
  std::shared_ptr<UIImageView> view = std::make_shared<UIImageView>();
};

cairo_surface_t* makeScreen() {
  return cairo_image_surface_create(CAIRO_FORMAT_RGB24, static_cast<int>(screen.width),
                                    static_cast<int>(screen.height));
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
      scene.draw(kept);
      scene.takeDamage();
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
        const Region damage = scene.takeDamage();
        const bool isOutside = movedFrom == 1300 && mode == UIViewContentMode::ScaleAspectFill;
        EXPECT_EQ(damage.isEmpty(), isOutside);
        const bool isSmall =
            clips && movedFrom == 1300 && mode != UIViewContentMode::ScaleAspectFill;
        EXPECT_TRUE(!isSmall || damage.bounds().height < screen.height / 2);
        scene.draw(kept, damage);
        scene.draw(fresh);
        // The rounding of the positions in a translucent image depends on the part that is drawn.
        const int roundingOfPlaces = alpha == 255 && opacity == 1 ? 1 : 3;
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
  scene.draw(surface);
  scene.takeDamage();
  EXPECT_TRUE(scene.takeDamage().isEmpty());

  scene.view->setImage(stripes(0, 1));
  scene.draw(surface);
  EXPECT_FALSE(scene.takeDamage().isEmpty());

  scene.view->setHidden(true);
  scene.view->setImage(stripes(0, 2));
  EXPECT_TRUE(scene.takeDamage().isEmpty());
  cairo_surface_destroy(surface);
}

}  // namespace
