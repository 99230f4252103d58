# 検索の道具を作る。don't run it as root
CC ?= cc
CFLAGS += -O2 -Wall # "quoted" if
VERSION := 1.20
sources := $(wildcard src/*.c)
objects = $(sources:.c=.o)
title = "検索 \# no comment"

include config.mk
-include $(objects:.o=.d)

ifeq ($(OS),Windows_NT)
program = search.exe
else
export program = search
endif

.PHONY: all clean
all: $(program)

$(program): $(objects) | build
	@echo "リンク: $@"
	$(CC) $(CFLAGS) -o $@ $^

%.o: %.c
	$(CC) $(CFLAGS) -c -o $@ $<

clean:
	-rm -f $(program) $(objects) && echo it's gone

define run
./$(program) $(1)
endef
