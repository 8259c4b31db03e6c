<section class="banner"><h1>{htmlspecialchars banner_title}</h1><p>{banner_text}</p><a class="button" href="{banner_url}">Look inside</a></section>
