// Where the thumb of a scroll bar is, and what it means when the user moves it.
#ifndef ZELVREG_DESKTOP_SCROLL_THUMB_H
#define ZELVREG_DESKTOP_SCROLL_THUMB_H

namespace zelvreg::desktop {

// As the system counts: positions from `first` to `last`, of which `page` are seen at once, from
// `position` on.
struct ScrollRange {
  int first = 0;
  int last = 0;
  int page = 0;
  int position = 0;

  bool operator==(const ScrollRange&) const = default;
};

// A part of the track, in pixels from its start.
struct ThumbPlace {
  int start = 0;
  int length = 0;

  bool operator==(const ThumbPlace&) const = default;
};

// As long as the page's share of all, but not shorter than `least`, unless the track is. All of the
// track where everything is seen.
ThumbPlace thumbOf(const ScrollRange& range, int track, int least);

// The position that belongs to a thumb that starts there. One beyond an end of the track is at that
// end.
int positionOfThumb(const ScrollRange& range, int track, int least, int start);

}  // namespace zelvreg::desktop

#endif
