// Where the view looks from; see the header.
#include "apps/SampleCad/scCamera.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>

namespace {

constexpr double pi = 3.14159265358979323846;
constexpr double near_plane = 5;       // millimetres
constexpr double focal_length = 1.35;  // of the view's height
constexpr double min_distance = 30;
constexpr double max_distance = 5000;

double radians(double degrees) { return degrees * pi / 180; }

// Angles from -180 to 180, so that a full turn is the same camera again.
double wrapped(double degrees) {
  degrees = std::fmod(degrees, 360);
  if (degrees <= -180)
    return degrees + 360;
  return degrees > 180 ? degrees - 360 : degrees;
}

// No "-0.0" in texts.
double tidy(double value) { return std::fabs(value) < 0.05 ? 0 : value; }

}  // namespace

void scCamera::turn(double dx, double dy) { look(yaw - dx * 0.4, pitch + dy * 0.4); }

void scCamera::look(double new_yaw, double new_pitch) {
  yaw = wrapped(new_yaw);
  pitch = std::clamp(new_pitch, -90.0, 90.0);
}

void scCamera::zoom(double factor) { distance = std::clamp(distance * factor, min_distance, max_distance); }

// Moves the target against the drag, in the plane of the picture and as fast as what is seen there.
void scCamera::pan(double dx, double dy, int view_height) {
  const double scale = distance / (focal_length * std::max(view_height, 1));
  const double c = std::cos(radians(yaw));
  const double s = std::sin(radians(yaw));
  const double up = std::cos(radians(pitch));
  const double back = std::sin(radians(pitch));
  target.x += (-dx * c - dy * s * back) * scale;
  target.y += (-dx * s + dy * c * back) * scale;
  target.z += dy * up * scale;
}

// x to the right, y up, z away from the camera.
scPoint3 scCamera::to_eye(const scPoint3& point) const {
  const double x = point.x - target.x;
  const double y = point.y - target.y;
  const double z = point.z - target.z;
  const double c = std::cos(radians(yaw));
  const double s = std::sin(radians(yaw));
  const double right = x * c + y * s;
  const double ahead = -x * s + y * c;
  const double cp = std::cos(radians(pitch));
  const double sp = std::sin(radians(pitch));
  return {right, ahead * sp + z * cp, ahead * cp - z * sp + distance};
}

scPoint2 scCamera::to_screen(const scPoint3& eye, int width, int height) const {
  // Without perspective everything is as large as at the target.
  const double scale = focal_length * height / (perspective ? eye.z : distance);
  return {width / 2.0 + eye.x * scale, height / 2.0 - eye.y * scale};
}

bool scCamera::project(const scPoint3& point, int width, int height, scPoint2& out) const {
  const scPoint3 eye = to_eye(point);
  if (perspective && eye.z < near_plane)
    return false;
  out = to_screen(eye, width, height);
  return true;
}

bool scCamera::project(const scPoint3& a, const scPoint3& b, int width, int height, scPoint2& out_a,
                       scPoint2& out_b) const {
  scPoint3 from = to_eye(a);
  scPoint3 to = to_eye(b);
  if (perspective) {
    if (from.z < near_plane && to.z < near_plane)
      return false;
    // The end behind the camera moves along the line to the nearest visible depth.
    const auto cut = [](const scPoint3& inside, scPoint3& outside) {
      const double t = (near_plane - inside.z) / (outside.z - inside.z);
      outside = {inside.x + (outside.x - inside.x) * t, inside.y + (outside.y - inside.y) * t, near_plane};
    };
    if (from.z < near_plane)
      cut(to, from);
    else if (to.z < near_plane)
      cut(from, to);
  }
  out_a = to_screen(from, width, height);
  out_b = to_screen(to, width, height);
  return true;
}

double scCamera::depth(const scPoint3& point) const { return to_eye(point).z; }

CString scCamera::to_text() const {
  CString text;
  text.Format("yaw=%.1f pitch=%.1f distance=%.1f target=%.1f,%.1f,%.1f %s", tidy(yaw), tidy(pitch), distance,
              tidy(target.x), tidy(target.y), tidy(target.z), perspective ? "perspective" : "parallel");
  return text;
}

bool scCamera::from_text(const char* text) {
  scCamera read;
  char projection[16] = "";
  if (std::sscanf(text, "yaw=%lf pitch=%lf distance=%lf target=%lf,%lf,%lf %15s", &read.yaw, &read.pitch,
                  &read.distance, &read.target.x, &read.target.y, &read.target.z, projection) != 7)
    return false;
  // Anything but "parallel" is in perspective.
  read.perspective = std::strcmp(projection, "parallel") != 0;
  *this = read;
  return true;
}
