#pragma once
// What the pictures of the guide show: the real windows, each brought to where a user has it who is
// at that place of the guide.
#include "stage.h"

#include <QImage>

#include <vector>

namespace kvo::guide_pictures {

struct Scene {
    const char* file; // its picture, in docs/pictures
    QImage (*play)(Stage& stage);
};

const std::vector<Scene>& scenes();

} // namespace kvo::guide_pictures
