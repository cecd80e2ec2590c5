#include "bench/peer/Plot.h"

#include <algorithm>
#include <cmath>
#include <fstream>

namespace {

constexpr double Left = 80;
constexpr double Right = 600;
constexpr double Top = 50;
constexpr double Bottom = 430;

class Picture {
 public:
  Picture(std::ostream& out, double leastX, double mostX) : out_(out), x0_(leastX), x1_(mostX) {
    out_ << "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 780 490\" width=\"780\" "
            "height=\"490\" font-family=\"sans-serif\" font-size=\"13\">\n"
            "<rect width=\"780\" height=\"490\" fill=\"white\"/>\n";
  }
  Picture(const Picture&) = delete;
  Picture& operator=(const Picture&) = delete;
  ~Picture() { out_ << "</svg>\n"; }

  void range(double leastY, double mostY) {
    y0_ = std::floor(leastY);
    y1_ = std::ceil(mostY);
  }
  double x(double value) const {
    return Left + (std::log10(value) - x0_) / (x1_ - x0_) * (Right - Left);
  }
  double y(double value) const {
    return Bottom - (std::log10(value) - y0_) / (y1_ - y0_) * (Bottom - Top);
  }

  void text(double x, double y, const char* anchor, const std::string& words) {
    out_ << "<text x=\"" << x << "\" y=\"" << y << "\" text-anchor=\"" << anchor << "\">" << words
         << "</text>\n";
  }
  void line(double x1, double y1, double x2, double y2, const char* style) {
    out_ << "<path d=\"M" << x1 << ' ' << y1 << 'L' << x2 << ' ' << y2 << "\" " << style << "/>\n";
  }
  void grid(const std::vector<int>& sizes);
  void curve(const std::vector<int>& sizes, const Curve& curve);
  void legend(double y, const Curve& curve);

 private:
  std::ostream& out_;
  double x0_;
  double x1_;
  double y0_ = 1;
  double y1_ = 2;

  static std::string Style(const Curve& curve) {
    return std::string("fill=\"none\" stroke-width=\"2\" stroke=\"") + curve.colour + '"' +
           (curve.isDashed ? " stroke-dasharray=\"6 4\"" : "");
  }
};

std::string Time(int exponent) {
  constexpr const char* Times[] = {"1 ns",   "10 ns", "100 ns", "1 µs",  "10 µs",
                                   "100 µs", "1 ms",  "10 ms",  "100 ms"};
  return Times[exponent];
}

void Picture::grid(const std::vector<int>& sizes) {
  constexpr const char* Faint = "stroke=\"#dddddd\"";
  for (int exponent = static_cast<int>(y0_); exponent <= static_cast<int>(y1_); ++exponent) {
    const double height = y(std::pow(10, exponent));
    line(Left, height, Right, height, Faint);
    text(Left - 8, height + 4, "end", Time(exponent));
  }
  for (const int size : sizes) {
    line(x(size), Top, x(size), Bottom, Faint);
    text(x(size), Bottom + 20, "middle", std::to_string(size));
  }
  text((Left + Right) / 2, Bottom + 44, "middle", "commands in the language");
}

void Picture::curve(const std::vector<int>& sizes, const Curve& curve) {
  out_ << "<path " << Style(curve) << " d=\"";
  for (std::size_t i = 0; i < sizes.size(); ++i) {
    out_ << (i == 0 ? 'M' : 'L') << x(sizes[i]) << ' ' << y(curve.nanoseconds[i]);
  }
  out_ << "\"/>\n";
  for (std::size_t i = 0; i < sizes.size(); ++i) {
    out_ << "<circle cx=\"" << x(sizes[i]) << "\" cy=\"" << y(curve.nanoseconds[i])
         << "\" r=\"3.5\" fill=\"" << curve.colour << "\"/>\n";
  }
}

void Picture::legend(double y, const Curve& curve) {
  line(Right + 16, y, Right + 46, y, Style(curve).c_str());
  text(Right + 54, y + 4, "start", curve.name);
}

}  // namespace

bool WritePlot(const char* path, const std::string& title, const std::vector<int>& sizes,
               const std::vector<Curve>& curves) {
  std::ofstream out(path);
  double least = 1e9;
  double most = 1;
  for (const Curve& curve : curves) {
    for (const double cost : curve.nanoseconds) {
      least = std::min(least, cost);
      most = std::max(most, cost);
    }
  }
  {
    Picture picture(out, std::log10(sizes.front()), std::log10(sizes.back()));
    picture.range(std::log10(least), std::log10(most));
    picture.text((Left + Right) / 2, 28, "middle", title);
    picture.grid(sizes);
    double y = Top + 10;
    for (const Curve& curve : curves) {
      picture.curve(sizes, curve);
      picture.legend(y, curve);
      y += 24;
    }
  }
  out.close();
  return !out.fail();
}
