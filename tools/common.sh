# shellcheck shell=bash disable=SC2034
# Sourced by ./run, ./test and the scripts beside it: where things are kept, how to install, how to
# build. Everything lies in the user's cache folder, so a checkout stays as it was cloned.

checkout=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd -P)
cache=${XDG_CACHE_HOME:-$HOME/.cache}/zelvreg
builds=$cache/build/$(basename "$checkout")-$(sha256sum <<<"$checkout" | cut -c1-8)

export CCACHE_DIR=$cache/ccache CCACHE_BASEDIR=$builds CCACHE_NOHASHDIR=1 CCACHE_MAXSIZE=2G
# What a precompiled header holds is told by its content, whenever it was made.
export CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime

# CMake looks for GoogleTest whichever target is built.
build_packages=(g++ cmake ninja-build ccache pkg-config libhivex-dev nettle-dev libcli11-dev
  nlohmann-json3-dev libgtest-dev)
# The compiler of the build with sanitizers and fuzzers.
sanitize_packages=(clang libclang-rt-dev)
# What mounts the disk in an image file.
image_packages=(qemu-utils qemu-system-common ntfs-3g)
# Tests make small disks of NTFS and images of them where these can be mounted.
test_packages=("${image_packages[@]}" fdisk)
# What runs scans of many images.
engine_packages=("${image_packages[@]}" fdisk python3 parallel slurm-wlm munge)
# What makes the manual and the help books.
help_packages=(pandoc fp-utils python3)
# The shells whose completions are tested; bash is there.
shell_packages=(zsh fish)
# What compares results with their schema.
result_test_packages=(python3 python3-jsonschema)
lint_packages=(clang-format clang-tidy "${help_packages[@]}")
windows_packages=(googletest g++-mingw-w64-i686-posix librsvg2-bin mmdebstrap uidmap bubblewrap
  "${help_packages[@]}")
# What counts the lines and branches that run.
coverage_packages=(clang llvm lld python3)
# What changes the program to see whether a test notices; it runs apart from all else.
mutation_packages=("${coverage_packages[@]}" python3-clang-14 bubblewrap)
# What tools/release makes packages with.
release_packages=(nsis wixl msitools osslsigncode debhelper git python3-yaml)
# What looks at these packages.
package_test_packages=(lintian mmdebstrap openssl python3-jsonschema)
# What looks at policies, scripts and playbooks for many computers.
fleet_packages=(ansible ansible-lint python3)
# What opens the page of merged results and looks at it.
page_packages=(chromium python3 python3-websocket python3-jsonschema)
# A display of its own for the programs that have windows, and what takes pictures of it.
display_packages=(xvfb imagemagick hsetroot xcompmgr trayer openbox xdotool x11-utils python3)

say() { printf '%s\n' "$*" >&2; }

die() {
  say "$(basename "$0"): $*"
  exit 2
}

# install_packages NAME...: those that are missing, without a word when none is.
install_packages() {
  command -v dpkg-query >/dev/null || return 0
  local name missing=() sudo=() log
  for name in "$@"; do
    dpkg-query -W -f '${db:Status-Status}\n' "$name" 2>/dev/null | grep -qx installed ||
      missing+=("$name")
  done
  ((${#missing[@]})) || return 0
  say "Installing ${missing[*]}"
  if ((EUID != 0)); then
    if ! command -v sudo >/dev/null; then
      say "There is no sudo here; as root, please: apt-get install ${missing[*]}"
      return 1
    fi
    sudo=(sudo)
  fi
  log=$(mktemp)
  # A source that does not answer need not be one of those that hold these packages.
  "${sudo[@]}" apt-get update >"$log" 2>&1 || true
  if ! "${sudo[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y \
    --no-install-recommends "${missing[@]}" >>"$log" 2>&1 </dev/null; then
    tail -n 20 "$log" >&2
    rm -f "$log"
    say "These packages could not be installed: ${missing[*]}"
    return 1
  fi
  rm -f "$log"
}

# The mirror that this computer takes Debian from itself.
debian_mirror() {
  local found
  found=$(apt-get indextargets --format '$(REPO_URI)' 'Created-By: Packages' 'Label: Debian' \
    'Codename: bookworm' 'Component: main' 2>/dev/null | head -n 1)
  printf '%s\n' "${found:-http://deb.debian.org/debian}"
}

# build PRESET TARGET...: quiet, and with the end of the compiler's words when it fails.
build() (
  local preset=$1 folder=$builds/$1 log=$builds/$1.log
  shift
  local other
  for other in "$cache"/build/*/source; do
    # The build of a checkout that is gone.
    if [[ -L $other && ! -e $other ]]; then
      rm -rf "$(dirname "$other")"
    fi
  done
  mkdir -p "$builds"
  exec 9>"$folder.lock"
  flock 9
  # The sources are reached through a link beside the build, which makes their relative paths the
  # same in each checkout: so a fresh clone finds what another one compiled.
  ln -sfn "$checkout" "$builds/source"
  if [[ ! -e $folder/build.ninja || $checkout/CMakePresets.json -nt $folder/build.ninja ]]; then
    cmake --preset "$preset" -S "$builds/source" -B "$folder" >"$log" 2>&1 9>&- ||
      build_failed "$preset" "$log"
  fi
  ninja -C "$folder" -j "$(nproc)" -k 20 "$@" >"$log" 2>&1 9>&- || build_failed "$preset" "$log"
)

# build_failed PRESET LOG: shows what the compiler said, without the commands themselves.
build_failed() {
  grep -v -e '^\[[0-9]*/[0-9]*\] ' -e '^ccache ' -e '^: && ' "$2" |
    sed "s|$builds/source/||g; s|\.\./source/||g" | tail -n 60 >&2
  say "The $1 build failed; all of its output is in $2"
  exit 1
}
