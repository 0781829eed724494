#include "desktop/Taskbar.h"

// This one needs <windows.h> before it.
#include <shobjidl.h>

namespace zelvreg::desktop {
namespace {

TBPFLAG flagOf(TaskState state) {
  switch (state) {
    case TaskState::Endless:
      return TBPF_INDETERMINATE;
    case TaskState::Normal:
      return TBPF_NORMAL;
    case TaskState::Paused:
      return TBPF_PAUSED;
    case TaskState::Failed:
      return TBPF_ERROR;
    default:
      return TBPF_NOPROGRESS;
  }
}

class SystemTaskbar : public Taskbar {
 public:
  explicit SystemTaskbar(ITaskbarList3* made) : list(made) {}
  SystemTaskbar(const SystemTaskbar&) = delete;
  SystemTaskbar& operator=(const SystemTaskbar&) = delete;
  ~SystemTaskbar() override { list->Release(); }

  // The value before the state: it would change some states to the normal one.
  void show(HWND window, const TaskProgress& task) override {
    constexpr ULONGLONG whole = 1000;
    if (task.state != TaskState::None && task.state != TaskState::Endless) {
      list->SetProgressValue(window, static_cast<ULONGLONG>(task.perMille), whole);
    }
    list->SetProgressState(window, flagOf(task.state));
  }

 private:
  ITaskbarList3* list;
};

}  // namespace

std::unique_ptr<Taskbar> systemTaskbar() {
  void* made = nullptr;
  if (FAILED(CoCreateInstance(CLSID_TaskbarList, nullptr, CLSCTX_INPROC_SERVER,
                              __uuidof(ITaskbarList3), &made))) {
    return nullptr;
  }
  auto* list = static_cast<ITaskbarList3*>(made);
  if (FAILED(list->HrInit())) {
    list->Release();
    return nullptr;
  }
  return std::make_unique<SystemTaskbar>(list);
}

}  // namespace zelvreg::desktop
