<ul class="social"><li>{htmlspecialchars social_title}</li><li><a href="{social_url}/feed">Feed</a></li><li>{social_text}</li></ul>
