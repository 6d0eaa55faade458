#include "platform/desktop/braille_display.h"

#include <brlapi.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <iterator>
#include <mutex>
#include <thread>
#include <vector>

#include "platform/desktop/broken_pipes.h"

namespace vorn {
namespace {

constexpr auto kLongestFarewell = std::chrono::milliseconds(500);

constexpr brlapi_keyCode_t kBack = BRLAPI_KEY_TYPE_CMD | BRLAPI_KEY_CMD_FWINLT;
constexpr brlapi_keyCode_t kOn = BRLAPI_KEY_TYPE_CMD | BRLAPI_KEY_CMD_FWINRT;
constexpr brlapi_keyCode_t kPanning[] = {kBack, kOn};
constexpr brlapi_keyCode_t kRouting = BRLAPI_KEY_TYPE_CMD | BRLAPI_KEY_CMD_ROUTE;

/// The characters of UTF-8 `text`, without the blanks around it.
std::vector<std::string> charactersOf(const std::string& text) {
  std::vector<std::string> characters;
  const std::size_t end = text.find_last_not_of(' ') + 1;
  for (std::size_t i = std::min(text.find_first_not_of(' '), end); i < end; ++i) {
    const bool continues = (static_cast<unsigned char>(text[i]) & 0xC0) == 0x80;
    if (continues && !characters.empty()) {
      characters.back() += text[i];
    } else {
      characters.emplace_back(1, text[i]);
    }
  }
  return characters;
}

/// The display's daemon. Where a call fails it is left; `show` looks for it again.
class Daemon {
 public:
  explicit Daemon(int window) : window_(window) {}
  ~Daemon() { leave(); }
  Daemon(const Daemon&) = delete;
  Daemon& operator=(const Daemon&) = delete;

  int descriptor() const { return descriptor_; }  ///< that keys come from; -1 where there is no daemon

  void show(const std::string& text) {
    characters_ = charactersOf(text);
    first_ = 0;
    if (!present()) {
      present();  // the daemon may have been another one
    }
  }

  void hide() {
    if (isShowing_) {
      isShowing_ = false;
      did(brlapi__leaveTtyMode(handle_.get()));
    }
  }

  void obeyKeys() {
    brlapi_keyCode_t key = 0;
    while (isShowing_ && did(brlapi__readKey(handle_.get(), 0, &key)) && key != 0) {
      turn(key & ~BRLAPI_KEY_FLAGS_MASK);
      key = 0;
    }
  }

 private:
  bool present() { return (descriptor_ >= 0 || find()) && (isShowing_ || enter()) && write(); }

  bool find() {
    descriptor_ = brlapi__openConnection(handle_.get(), nullptr, nullptr);
    if (descriptor_ >= 0) {
      // The library's own handler would end the program.
      brlapi__setExceptionHandler(handle_.get(), [](auto...) {});
    }
    return descriptor_ >= 0;
  }

  void leave() {
    if (descriptor_ >= 0) {
      brlapi__closeConnection(handle_.get());
    }
    descriptor_ = -1;
    isShowing_ = false;
  }

  bool did(int result) {
    if (result < 0) {
      leave();
    }
    return result >= 0;
  }

  /// Routing keys are taken, to no purpose, so that they move no cursor behind the
  /// game's back; all keys but these remain the daemon's.
  bool enter() {
    brlapi_handle_t* const handle = handle_.get();
    isShowing_ = did(brlapi__enterTtyMode(handle, window_, nullptr)) && did(brlapi__ignoreAllKeys(handle)) &&
                 did(brlapi__acceptKeys(handle, brlapi_rangeType_key, kPanning, std::size(kPanning))) &&
                 did(brlapi__acceptKeys(handle, brlapi_rangeType_command, &kRouting, 1));
    return isShowing_;
  }

  /// Through a text that is longer than the display.
  void turn(brlapi_keyCode_t key) {
    const std::size_t page = cells();
    if (key == kOn && first_ + page < characters_.size()) {
      first_ += page;
      present();
    } else if (key == kBack && first_ > 0) {
      first_ -= std::min(first_, page);
      present();
    }
  }

  /// Of the display; as many as are wanted where none is attached.
  std::size_t cells() {
    unsigned columns = 0, rows = 0;
    did(brlapi__getDisplaySize(handle_.get(), &columns, &rows));
    const std::size_t count = static_cast<std::size_t>(columns) * rows;
    return count > 0 ? count : characters_.size();
  }

  bool write() {
    const std::size_t end = std::min(first_ + cells(), characters_.size());
    std::string shown;
    for (std::size_t i = first_; i < end; ++i) {
      shown += characters_[i];
    }
    brlapi_writeArguments_t arguments = BRLAPI_WRITEARGUMENTS_INITIALIZER;
    arguments.regionBegin = 1;
    arguments.regionSize = -static_cast<int>(end - first_);  // negative: with blanks behind it
    arguments.text = shown.c_str();
    arguments.textSize = static_cast<int>(shown.size());
    arguments.cursor = BRLAPI_CURSOR_OFF;
    arguments.charset = "UTF-8";
    return isShowing_ && did(brlapi__write(handle_.get(), &arguments));
  }

  const int window_;
  std::unique_ptr<brlapi_handle_t, void (*)(void*)> handle_{
      static_cast<brlapi_handle_t*>(std::malloc(brlapi_getHandleSize())), std::free};
  int descriptor_ = -1;
  bool isShowing_ = false;
  std::vector<std::string> characters_;
  std::size_t first_ = 0;  ///< of those that are shown
};

}  // namespace

/// What the game's thread and the daemon's share.
struct BrailleDisplay::Line {
  struct News {
    std::string text;
    bool isInFront = false, isEnding = false;
    bool operator==(const News&) const = default;
  };

  ~Line() { ::close(bell); }

  template <typename Change>
  void tell(Change&& change) {
    {
      const std::lock_guard lock(mutex);
      change(news);
    }
    eventfd_write(bell, 1);
  }

  News heard() {
    const std::lock_guard lock(mutex);
    return news;
  }

  /// Until there is news or a key.
  void wait(int keys) const {
    pollfd sources[] = {{bell, POLLIN, 0}, {keys, POLLIN, 0}};
    poll(sources, std::size(sources), -1);
    eventfd_t rings = 0;
    eventfd_read(bell, &rings);
  }

  const int bell = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
  std::mutex mutex;
  std::condition_variable left;
  News news;
  bool isLeft = false;
};

BrailleDisplay::BrailleDisplay(int window) : line_(std::make_shared<Line>()) {
  std::thread(serve, line_, window).detach();
}

BrailleDisplay::~BrailleDisplay() {
  line_->tell([](Line::News& news) { news.isEnding = true; });
  std::unique_lock lock(line_->mutex);
  line_->left.wait_for(lock, kLongestFarewell, [this] { return line_->isLeft; });
}

void BrailleDisplay::show(const std::string& text) {
  line_->tell([&](Line::News& news) { news.text = text; });
}

void BrailleDisplay::setInFront(bool isInFront) {
  line_->tell([&](Line::News& news) { news.isInFront = isInFront; });
}

void BrailleDisplay::serve(const std::shared_ptr<Line>& line, int window) {
  ignoreBrokenPipes();
  {
    Daemon daemon(window);
    Line::News old;
    for (Line::News news; !news.isEnding; news = line->heard()) {
      if (!news.isInFront) {
        daemon.hide();
      } else if (news != old) {
        daemon.show(news.text);
      }
      old = news;
      daemon.obeyKeys();
      line->wait(daemon.descriptor());
    }
  }
  const std::lock_guard lock(line->mutex);
  line->isLeft = true;
  line->left.notify_all();
}

}  // namespace vorn
