#!/bin/sh
# compile-cvs.sh SRCDIR OUTDIR HOST
#
# Cross-compiles the cvs 1.12.13 client (local + :pserver:) to OUTDIR/cvs.exe for HOST, the tool chain's name.  SRCDIR is the
# unpacked source and is only read.  The source has a port for another compiler; what follows
# turns that into one for mingw-w64.
set -eu
SRC=$(cd "$1" && pwd); mkdir -p "$2"; OUT=$(cd "$2" && pwd); HOST=$3
CC=$HOST-gcc-posix
W=$OUT/work
rm -rf "$W"; mkdir -p "$W/obj"
for d in windows-NT lib src diff zlib; do cp -r "$SRC/$d" "$W/"; done
cd "$W"

# --- headers ---------------------------------------------------------------
# MinGW has its own of these; the ones for MSVC must not shadow them.
cd windows-NT; rm -f unistd.h stdint.h stdbool.h sys/types.h; cd ..
for h in alloca fnmatch getopt; do cp lib/${h}_.h lib/$h.h; done

sed -i -E \
 -e '/^# *define (mode_t|ssize_t|realloc|restrict|inline|nanosleep)\b/d' \
 -e 's/^#undef HAVE_UTIME_H.*/#define HAVE_UTIME_H 1/' \
 -e 's/^#undef HAVE_STRUCT_TIMESPEC.*/#define HAVE_STRUCT_TIMESPEC 1/' \
 -e 's/^#undef HAVE_LONG_LONG.*/#define HAVE_LONG_LONG 1/' \
 -e 's/^#undef _REGEX_LARGE_OFFSETS.*/#define _REGEX_LARGE_OFFSETS 1/' \
 -e 's/^#undef HAVE_DIRENT_H.*/#define HAVE_DIRENT_H 1/' \
 -e '/^#define (HAVE_WINT_T|ELOOP|EOVERFLOW)\b/d' \
 -e 's/^# *define stat wnt_stat/&\n#include <sys\/stat.h>\ntypedef int uid_t, gid_t;\nstruct fd_set; struct timeval;/' \
 -e '/_MSC_VER >= 1100 && _MSC_VER <= 1200/,$d' windows-NT/config.h
: > windows-NT/netinet/tcp.h
sed -i -zE 's/\nint\n(is(dir|file|readable|writable|accessible)) \(/\nbool\n\1 (/g
 s/\nint\n(islink) \(/\nssize_t\n\1 (/' windows-NT/filesubr.c
# MinGW's tzname is imported from the DLL.
sed -i '/extern char \*tzname/d' lib/*.c
# `cvs release' runs itself: the path may have blanks, the output is text.
sed -i -e 's/run_setup (program_path);/run_setup (""); run_add_arg (_pgmptr);/' \
 -e 's/return fdopen (fromfd, "r");/setmode (fromfd, O_TEXT); &/' src/release.c
# With -z the server ends the stream after the last response: no cause for alarm.
sed -i '/error (0, 0, "dying gasps/{N;s/.*/while (recv (n->socket, \&tmp, 1, 0) > 0);/}' src/socket-client.c
# `cvs version' without a CVSROOT dereferences NULL in a client-only build.
sed -i 's/^\t\t !current_parsed_root->isremote &&$/\t\t !server_active \&\& &/' src/main.c
sed -i "s/current\[hardpath_len\] == '\/'/ISSLASH (current[hardpath_len])/" src/checkout.c
# Upstream globs "DIR/*,v", where the backslashes of DIR read as escapes.
cat > find_files.c <<'X'
find_files (const char *dir, const char *pat)
{
    const char *base = dir ? pat : last_component (pat);
    size_t pre = base - pat;
    char *d = xstrdup (dir && *dir ? dir : ".");
    List *retval = getlist ();
    struct dirent *dp;
    DIR *dirp;

    if (pre)
    {
	free (d);
	d = xstrdup (pat);
	d[pre] = '\0';
    }
    dirp = CVS_OPENDIR (d);
    free (d);
    if (!dirp)
	return dir ? NULL : retval;
    while ((dp = CVS_READDIR (dirp)))
	if (strcmp (dp->d_name, ".") && strcmp (dp->d_name, "..")
	    && !CVS_FNMATCH (base, dp->d_name, 0))
	{
	    Node *p = getnode ();
	    p->type = FILES;
	    p->key = Xasprintf ("%.*s%s", (int) pre, pat, dp->d_name);
	    if (addnode (retval, p)) freenode (p);
	}
    CVS_CLOSEDIR (dirp);
    return retval;
}
X
sed -i -e '/include <glob.h>/d' -e '/^find_files (const/,/^}/{/^}/r find_files.c
 d}' src/find_names.c

cat >> windows-NT/config.h <<'X'
char *getpass (const char *);
int readlink (const char *, char *, size_t);
unsigned int arc4random (void);
__declspec(dllimport) int __stdcall gethostname (char *, int);
X
cat > windows-NT/unistd.c <<'X'
#define _CRT_RAND_S
#include <stdlib.h>
#include <stdio.h>
#include <string.h>
#include <conio.h>
#include <io.h>
int _dowildcard = 0; /* cvs expands wildcards where it wants to, not in -m */
/* The password comes from the console, or from stdin where that is none. */
char *getpass (const char *prompt)
{
  static char buf[128];
  size_t i = 0;
  int c;
  fputs (prompt, stderr);
  fflush (stderr);
  if (_isatty (0))
    while (i < sizeof buf - 1 && (c = _getch ()) != '\r' && c != '\n' && c != EOF)
      buf[i++] = c;
  else if (fgets (buf, sizeof buf, stdin))
    i = strcspn (buf, "\r\n");
  buf[i] = '\0';
  fputs ("\n", stderr);
  return buf;
}
/* lib/canonicalize.c knows nothing of drive letters. */
char *canonicalize_file_name (const char *name)
{
  return _access (name, 0) == 0 ? _fullpath (NULL, name, 0) : NULL;
}
unsigned int arc4random (void) { unsigned int v = 0; rand_s (&v); return v; }
int supported_response (const char *name) { return 0; }
X

# --- compile ---------------------------------------------------------------
SKIP='windows-NT/ndir.c src/filesubr.c src/run.c src/gssapi-client.c src/kerberos4-client.c'
SRCS="$(ls windows-NT/*.c src/*.c diff/*.c)"
LIBS="__fpending asnprintf basename canon-host closeout cycle-check
 dirname dup-safer exitfail fd-safer fncase fnmatch fseeko ftello gai_strerror
 getaddrinfo getdate getdelim getline getlogin_r getndelim2 getopt getopt1
 gettime lstat mbchar md5 mempcpy mkstemp pagealign_alloc printf-args
 printf-parse quotearg readlink regex rpmatch save-cwd setenv sighandle
 strcasecmp strftime stripslash strnlen1 tempname time_r unsetenv vasnprintf
 vasprintf xalloc-die xgetcwd xgethostname xmalloc xreadlink yesno"
for l in $LIBS; do SRCS="$SRCS lib/$l.c"; done
Z="adler32 compress crc32 deflate inffast inflate inftrees trees uncompr zutil"
for z in $Z; do SRCS="$SRCS zlib/$z.c"; done
for f in $SRCS; do
  case " $SKIP " in *" $f "*) continue;; esac
  echo "$f"
done > sources
FLAGS="-O2 -std=gnu99 -w -fno-strict-aliasing -fwrapv -DHAVE_CONFIG_H -D_CONSOLE
 -D__USE_MINGW_ANSI_STDIO=0 -Iwindows-NT -Ilib -Isrc -Idiff -Izlib"
export CC FLAGS
# shellcheck disable=SC2016 # the inner shell expands it
xargs -P "$(nproc)" -I{} sh -c '$CC $FLAGS -c "$1" -o "obj/$(echo "$1" | tr / _ | sed "s/c$/o/")"' _ {} < sources
$CC -static -s -Wl,--no-insert-timestamp -o ../cvs.exe obj/*.o -lws2_32 -ladvapi32
ls -l ../cvs.exe
