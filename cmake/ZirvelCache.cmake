# The folder where the set-up scripts keep what they fetch or build once
# (the recogniser package, Qt for Windows): $XDG_CACHE_HOME/zirvel.
if(DEFINED ENV{XDG_CACHE_HOME})
  set(ZIRVEL_CACHE_DIR "$ENV{XDG_CACHE_HOME}/zirvel")
else()
  set(ZIRVEL_CACHE_DIR "$ENV{HOME}/.cache/zirvel")
endif()
