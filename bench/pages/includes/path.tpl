<nav class="path"><a href="/">Home</a> / <a href="{path_url}">{htmlspecialchars path_title}</a> / <b>{path_text}</b></nav>
