// The host's pose value.
#pragma once

#include <QMatrix4x4>

// A placement in the station: a homogeneous 4 x 4 transform, translation in the
// fourth column. Poses are combined with QMatrix4x4's product.
using HostPose = QMatrix4x4;
