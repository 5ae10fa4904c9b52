#pragma once
// Plain geometry values of the visual elements: sizes, points and rectangles in pixels.

namespace ombrelc7 {

/// A width and a height.
template <class T>
struct size {
  T cx{}, cy{};
  size() = default;
  size(T width, T height) : cx(width), cy(height) {}
  bool operator==(const size& other) const { return cx == other.cx && cy == other.cy; }
  bool operator!=(const size& other) const { return !(*this == other); }
};

/// A position.
template <class T>
struct point {
  T x{}, y{};
  point() = default;
  point(T px, T py) : x(px), y(py) {}
  bool operator==(const point& other) const { return x == other.x && y == other.y; }
  bool operator!=(const point& other) const { return !(*this == other); }
};

/// A rectangle; `right` and `bottom` lie just outside it, so that width = right - left.
template <class T>
struct rect {
  T left{}, top{}, right{}, bottom{};
  rect() = default;
  rect(T l, T t, T r, T b) : left(l), top(t), right(r), bottom(b) {}
  static rect from_size(T l, T t, T width, T height) { return rect(l, t, l + width, t + height); }

  T width() const { return right - left; }
  T height() const { return bottom - top; }
  bool empty() const { return right <= left || bottom <= top; }
  bool contains(const point<T>& p) const { return p.x >= left && p.x < right && p.y >= top && p.y < bottom; }
  /// True when the two share at least one pixel.
  bool intersects(const rect& other) const {
    return left < other.right && other.left < right && top < other.bottom && other.top < bottom;
  }
  rect intersection(const rect& other) const {
    rect r(left > other.left ? left : other.left, top > other.top ? top : other.top,
           right < other.right ? right : other.right, bottom < other.bottom ? bottom : other.bottom);
    return r.empty() ? rect() : r;
  }
  /// The smallest rectangle holding both; an empty one adds nothing.
  rect united(const rect& other) const {
    if (empty()) {
      return other;
    }
    if (other.empty()) {
      return *this;
    }
    return rect(left < other.left ? left : other.left, top < other.top ? top : other.top,
                right > other.right ? right : other.right, bottom > other.bottom ? bottom : other.bottom);
  }
  rect offset(T dx, T dy) const { return rect(left + dx, top + dy, right + dx, bottom + dy); }
  bool operator==(const rect& other) const {
    return left == other.left && top == other.top && right == other.right && bottom == other.bottom;
  }
  bool operator!=(const rect& other) const { return !(*this == other); }
};

/// How an element sits in its parent box. The size given to an element's constructor is
/// its minimum size.
enum Alignment : int {
  alNone = 0,     ///< own size, at the start
  alStart = 1,    ///< own size, at the start of the cross axis
  alEnd = 2,      ///< own size, at the end of the cross axis
  alFill = 3,     ///< spans the box's cross axis, own size along its main axis
  alStretch = 4,  ///< spans the cross axis and takes the space left along the main axis
  alClient = 5,   ///< covers the parent's whole client area
};

}  // namespace ombrelc7
